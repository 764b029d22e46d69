#include "engine/formats/mesh/ply_properties.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engine/formats/mesh/mesh_attributes.h"
#include "engine/formats/number_text.h"

namespace zol::engine {

namespace {

struct RoleName {
    std::string_view property;
    PlyRole role;
};

constexpr std::array kRoleNames = {
    RoleName{"x", PlyRole::X},
    RoleName{"y", PlyRole::Y},
    RoleName{"z", PlyRole::Z},
    RoleName{"red", PlyRole::Red},
    RoleName{"green", PlyRole::Green},
    RoleName{"blue", PlyRole::Blue},
    RoleName{"alpha", PlyRole::Alpha},
    RoleName{"diffuse_red", PlyRole::Red},
    RoleName{"diffuse_green", PlyRole::Green},
    RoleName{"diffuse_blue", PlyRole::Blue},
    RoleName{"nx", PlyRole::Passed},
    RoleName{"ny", PlyRole::Passed},
    RoleName{"nz", PlyRole::Passed},
    RoleName{"s", PlyRole::Passed},
    RoleName{"t", PlyRole::Passed},
    RoleName{"u", PlyRole::Passed},
    RoleName{"v", PlyRole::Passed},
    RoleName{"texture_u", PlyRole::Passed},
    RoleName{"texture_v", PlyRole::Passed},
};

/// Of real numbers 1 is full, of whole ones what a byte, or two, hold.
std::uint8_t channel(PlyType type, double value) {
    double full = 255.0;
    if (!is_whole(type)) full = 1.0;
    if (type == PlyType::Uint16) full = 65535.0;
    const double scaled = value / full * 255.0;
    // Also of NaN, and of an infinite number.
    if (!(scaled > 0.0)) return 0;
    return static_cast<std::uint8_t>(std::lround(std::min(scaled, 255.0)));
}

bool has(const std::vector<PlyRole>& roles, PlyRole role) {
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

}  // namespace

std::vector<PlyRole> roles_of(const PlyElement& element) {
    std::vector<PlyRole> roles;
    for (const PlyProperty& property : element.properties) {
        const auto* const known =
            std::find_if(kRoleNames.begin(), kRoleNames.end(),
                         [&](const RoleName& row) { return row.property == property.name; });
        PlyRole role = known == kRoleNames.end() ? PlyRole::Other : known->role;
        // A property that comes twice, or in two spellings, counts once.
        if (property.count_type || (role < PlyRole::Passed && has(roles, role))) {
            role = PlyRole::Passed;
        }
        roles.push_back(role);
    }
    return roles;
}

PlyColours::PlyColours(const std::vector<PlyRole>& roles)
    : is_coloured_(has(roles, PlyRole::Red) && has(roles, PlyRole::Green) &&
                   has(roles, PlyRole::Blue)),
      has_opacity_(has(roles, PlyRole::Alpha)) {}

void PlyColours::Take(PlyRole role, PlyType type, double value) {
    const auto at = static_cast<std::size_t>(role) - static_cast<std::size_t>(PlyRole::Red);
    colour_[at] = channel(type, value);
}

void PlyRange::Tell(MeshData& mesh) const {
    if (least_ > greatest_) return;
    add_text("vertex_" + property_, number_text(least_) + " to " + number_text(greatest_), mesh);
}

}  // namespace zol::engine
