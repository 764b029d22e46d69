#include "tools/zol/near_names.h"

#include <algorithm>
#include <numeric>

namespace zol::tool {

namespace {

// More would push the error itself off the screen.
constexpr std::size_t kMostListed = 40;

std::string lower_case(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

/// How many bytes have to be put in, taken out or changed to make `b` of `a`.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({changed, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

bool is_near(const std::string& wanted, const std::string& name) {
    const std::string a = lower_case(wanted);
    const std::string b = lower_case(name);
    const bool is_part = a.size() >= 2 && b.find(a) != std::string::npos;
    return is_part || distance(a, b) <= std::max<std::size_t>(1, a.size() / 4);
}

}  // namespace

std::string near_names(const std::string& wanted, const std::vector<std::string>& known) {
    std::string near;
    for (const std::string& name : known) {
        if (is_near(wanted, name)) near += (near.empty() ? "'" : " or '") + name + "'";
    }
    if (!near.empty()) return "Did you mean " + near + "?";

    std::string all;
    for (std::size_t i = 0; i < std::min(known.size(), kMostListed); ++i) {
        all += (i == 0 ? "" : ", ") + known[i];
    }
    if (known.size() > kMostListed) {
        all += " and " + std::to_string(known.size() - kMostListed) + " more";
    }
    return "There are: " + all + ".";
}

}  // namespace zol::tool
