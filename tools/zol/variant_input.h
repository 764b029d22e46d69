// A file of values, understood by what it begins with.
#pragma once

#include <string>

#include "support/variant.h"

namespace zol::tool {

struct VariantInput {
    MVariant value;
    /// What the file is, in words.
    std::string form;
    /// What a person had better know about it; empty when there is nothing.
    std::string remark;
};

/// Throws ReadFailure, with the line or byte where there is one.
VariantInput read_variant(const std::string& file);

}  // namespace zol::tool
