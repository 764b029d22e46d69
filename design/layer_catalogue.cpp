#include "design/layer_catalogue.h"

#include <algorithm>

namespace zol::design::flat {

namespace {

bool is_listed(const std::string& name) {
    return !name.empty() && name[0] != '$' && !name.starts_with("DIG$");
}

}  // namespace

int count_listed(const std::vector<std::string>& names) {
    return static_cast<int>(std::count_if(names.begin(), names.end(), is_listed));
}

std::optional<int> position_of(const std::vector<std::string>& names, int catalogue_index) {
    int listed = 0;
    for (std::size_t position = 0; position < names.size(); ++position) {
        if (is_listed(names[position]) && listed++ == catalogue_index) {
            return static_cast<int>(position);
        }
    }
    return std::nullopt;
}

}  // namespace zol::design::flat
