#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

namespace zol::testing {

/// A file name that no other running test uses. Nothing stands there yet.
inline std::string fresh_file_name(const std::string& ending) {
    std::string name = ::testing::TempDir() + "zol_" + std::to_string(getpid()) + "_" + ending;
    std::remove(name.c_str());
    return name;
}

inline std::string text_of_file(const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

}  // namespace zol::testing
