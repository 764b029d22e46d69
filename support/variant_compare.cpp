// Comparison of two values, container by container: those still to be compared are kept
// in a list.
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "support/ascii.h"
#include "support/floating_point.h"
#include "support/variant.h"
#include "support/variant_traversal.h"

namespace {

using namespace zol::support;

bool same_text(std::string_view left, std::string_view right, bool ignore_case) {
    return ignore_case ? compare_ignoring_case(left, right) == 0 : left == right;
}

std::string_view text_of(const MVariant& value) {
    return value.Text() != nullptr ? std::string_view(*value.Text()) : std::string_view();
}

class Comparison {
public:
    Comparison(double tolerance, bool ignore_case, bool ignore_key_case)
        : tolerance_(tolerance), ignore_case_(ignore_case), ignore_key_case_(ignore_key_case) {}

    [[gnu::noinline]] bool Run(const MVariant& left, const MVariant& right) {
        bool same = SameBut(left, right);
        while (same && !containers_.empty()) {
            const auto [one, other] = containers_.back();
            containers_.pop_back();
            same = one->Kind() == MV_VECTOR ? SameVectors(*one, *other) : SameMaps(*one, *other);
        }
        return same;
    }

private:
    // What is in containers is left for later.
    bool SameBut(const MVariant& left, const MVariant& right) {
        if (left.Kind() != right.Kind()) {
            return false;
        }
        switch (left.Kind()) {
            case MV_DOUBLE:
                // Not-a-number differs from nothing.
                return !(std::fabs(left.AsDouble() - right.AsDouble()) > tolerance_);
            case MV_STRING:
                return same_text(text_of(left), text_of(right), ignore_case_);
            case MV_INT:
            case MV_INT64:
            case MV_POINTER:
                return left.AsInt64() == right.AsInt64();
            case MV_VECTOR:
            case MV_MAP:
                containers_.emplace_back(&left, &right);
                return true;
            default:
                return true;
        }
    }

    bool SameVectors(const MVariant& left, const MVariant& right) {
        const int size = left.Size();
        if (size != right.Size()) {
            return false;
        }
        // A vector that is shared is equal to itself, unless no two numbers are.
        if (left.Vector() == right.Vector() && !(tolerance_ < 0)) {
            return true;
        }
        for (int i = 0; i < size; ++i) {
            if (!SameBut(left.Vector()->begin()[i], right.Vector()->begin()[i])) {
                return false;
            }
        }
        return true;
    }

    bool SameMaps(const MVariant& left, const MVariant& right) {
        ListEntries(left, left_);
        ListEntries(right, right_);
        if (left_.size() != right_.size()) {
            return false;
        }
        for (std::size_t i = 0; i < left_.size(); ++i) {
            if (!same_text(left_[i].key, right_[i].key, ignore_key_case_) ||
                !SameBut(*left_[i].value, *right_[i].value)) {
                return false;
            }
        }
        return true;
    }

    static void ListEntries(const MVariant& map, std::vector<VariantEntry>& entries) {
        entries.clear();
        if (map.Map() != nullptr) {
            append_entries(*map.Map(), KeyOrder::kSortedIgnoringCase, entries);
        }
    }

    double tolerance_;
    bool ignore_case_;
    bool ignore_key_case_;
    std::vector<std::pair<const MVariant*, const MVariant*>> containers_;
    // Of the maps that are being compared.
    std::vector<VariantEntry> left_;
    std::vector<VariantEntry> right_;
};

}  // namespace

bool MVariant::Equals(const MVariant& other, double tolerance, bool ignore_case,
                      bool ignore_key_case) const {
    const UsualFloatingPoint usual;
    return Comparison(tolerance, ignore_case, ignore_key_case).Run(*this, other);
}

bool MVariant::operator==(const MVariant& other) const {
    return Equals(other, 1e-06, false, false);
}
