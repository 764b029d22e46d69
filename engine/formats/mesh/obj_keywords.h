// The words of OBJ that say nothing of a mesh, so that any other can be told as foreign.
#pragma once

#include <algorithm>
#include <string_view>

namespace zol::engine {

/// Words whose lines are passed: points, lines and free forms, what groups and draws them, and
/// what older versions of the format had.
inline constexpr std::string_view kPassedObjKeywords[] = {
    "p",        "l",         "vp",     "s",         "mg",       "cstype", "deg",   "bmat",
    "step",     "curv",      "curv2",  "surf",      "parm",     "trim",   "hole",  "scrv",
    "sp",       "end",       "con",    "bevel",     "c_interp", "lod",    "ctech", "stech",
    "d_interp", "trace_obj", "maplib", "usemap",    "call",     "csh",    "bsp",   "bzp",
    "cdc",      "cdp",       "res",    "shadow_obj"};

inline bool is_passed_obj_keyword(std::string_view word) {
    return std::find(std::begin(kPassedObjKeywords), std::end(kPassedObjKeywords), word) !=
           std::end(kPassedObjKeywords);
}

}  // namespace zol::engine
