// Writes classic netCDF files: what the tests need of them.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zol::testing_support {

/// Dimensions and variables of doubles, in the order in which they are added.
class NetcdfWriter {
public:
    /// A length of 0 makes the dimension the one of records, of which there are none.
    NetcdfWriter& Dimension(const std::string& name, std::uint32_t length) {
        dimensions_ += Name(name) + Whole(length);
        ++dimension_count_;
        return *this;
    }

    /// `dimensions` counts them from 0; `unit` is left out when it is empty.
    NetcdfWriter& Variable(const std::string& name, const std::vector<std::uint32_t>& dimensions,
                           const std::vector<double>& values, const std::string& unit = {}) {
        std::string head = Name(name) + Whole(dimensions.size());
        for (const std::uint32_t dimension : dimensions) head += Whole(dimension);
        constexpr int kAttributes = 12;
        constexpr int kText = 2;
        constexpr int kDouble = 6;
        head += unit.empty()
                    ? Whole(0) + Whole(0)
                    : Whole(kAttributes) + Whole(1) + Name("units") + Whole(kText) + Name(unit);
        head += Whole(kDouble) + Whole(values.size() * 8);
        variables_.push_back({head, values});
        return *this;
    }

    std::string Bytes() const {
        constexpr int kDimensions = 10;
        constexpr int kVariables = 11;
        std::string head("CDF\1\0\0\0\0", 8);
        head += Whole(kDimensions) + Whole(dimension_count_) + dimensions_;
        head += Whole(0) + Whole(0);
        head += Whole(kVariables) + Whole(variables_.size());
        std::size_t start = head.size();
        for (const auto& [text, values] : variables_) start += text.size() + 4;
        std::string data;
        for (const auto& [text, values] : variables_) {
            head += text + Whole(start + data.size());
            for (const double value : values) {
                const auto bits = std::bit_cast<std::uint64_t>(value);
                data += Whole(bits >> 32) + Whole(bits & 0xFFFFFFFF);
            }
        }
        return head + data;
    }

private:
    static std::string Whole(std::uint64_t number) {
        std::string bytes;
        for (const int shift : {24, 16, 8, 0}) bytes += static_cast<char>(number >> shift);
        return bytes;
    }
    static std::string Name(const std::string& name) {
        return Whole(name.size()) + name + std::string((4 - name.size() % 4) % 4, '\0');
    }

    std::string dimensions_;
    std::uint32_t dimension_count_ = 0;
    std::vector<std::pair<std::string, std::vector<double>>> variables_;
};

}  // namespace zol::testing_support
