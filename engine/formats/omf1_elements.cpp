#include "engine/formats/omf1_elements.h"

#include <cmath>
#include <optional>

#include "engine/formats/read_error.h"

namespace zol::engine {

namespace {

constexpr std::size_t kElementsListed = 20;
constexpr std::size_t kLongestNameListed = 80;

std::string element_list(const std::vector<Omf1Element>& elements) {
    if (elements.empty()) return "it has no elements";
    std::string text = "its elements are";
    for (std::size_t i = 0; i < elements.size(); ++i) {
        if (i == kElementsListed) {
            return text + " and " + std::to_string(elements.size() - i) + " more";
        }
        text += (i == 0 ? " \"" : ", \"") + elements[i].name.substr(0, kLongestNameListed) +
                "\" (" + elements[i].class_name + ")";
    }
    return text;
}

}  // namespace

const Omf1Element& choose_element(const std::vector<Omf1Element>& elements, const std::string& name,
                                  const std::string& kind,
                                  const std::function<bool(const Omf1Element&)>& is_wanted) {
    for (const Omf1Element& element : elements) {
        if ((name.empty() || element.name == name) && is_wanted(element)) return element;
    }
    const std::string wanted = "no " + kind + (name.empty() ? "" : " \"" + name + "\"");
    throw ReadError("the file has " + wanted + "; " + element_list(elements));
}

std::array<double, 3> read_vector(const JsonValue& object, std::string_view key,
                                  const std::array<double, 3>& otherwise) {
    const std::optional<JsonValue> value = object.Find(key);
    if (!value) return otherwise;
    const std::vector<double> numbers = value->Numbers(3);
    for (const double number : numbers) {
        if (!std::isfinite(number)) value->Refuse("is not finite");
    }
    return {numbers[0], numbers[1], numbers[2]};
}

std::vector<double> read_widths(const JsonValue& list, std::size_t most) {
    std::vector<double> widths = list.Numbers();
    if (widths.empty()) list.Refuse("is empty");
    if (widths.size() > most) list.Refuse("has more than " + std::to_string(most) + " cells");
    for (std::size_t i = 0; i < widths.size(); ++i) {
        if (!(widths[i] > 0.0) || !std::isfinite(widths[i])) {
            list.At(i).Refuse("is no width of a cell");
        }
    }
    return widths;
}

}  // namespace zol::engine
