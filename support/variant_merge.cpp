// Adding one value to another. The right side may be the left one, or stand in it.
#include <algorithm>
#include <bit>
#include <utility>
#include <vector>

#include "support/array.h"
#include "support/floating_point.h"
#include "support/string_map.h"
#include "support/value_vector.h"
#include "support/variant.h"

namespace {

using namespace zol::support;

using VariantMap = VStringMap<MVariant>;

[[gnu::noinline]] double plain_sum(double left, double right) {
    return left + right;
}

double sum(const MVariant& left, const MVariant& right) {
    const double first = left.AsDouble();
    const double second = right.AsDouble();
    const UsualFloatingPoint usual;
    return plain_sum(first, second);
}

bool is_integer(MVariantKind kind) {
    return kind == MV_INT || kind == MV_INT64;
}

void append(VARIANTVECTOR& vector, MVariant value) {
    array_t& array = vector.Array();
    // Room first: an addition that fails would leave its mark on the count.
    if (array_Resize(&array, array.count + 1) == 0) {
        throw std::bad_alloc();
    }
    static_cast<MVariant*>(array_Add(&array))->swap(value);
}

// What it replaces is kept until all is merged, since the right side may be in it.
void merge_maps(MVariant& left, const VariantMap& right) {
    struct Merge {
        MVariant* into;
        const VariantMap* from;
    };
    std::vector<MVariant> replaced;
    std::vector<Merge> waiting{{&left, &right}};
    while (!waiting.empty()) {
        const Merge merge = waiting.back();
        waiting.pop_back();
        merge.from->ForEach([&](const char* key, const MVariant& value) {
            const bool both = merge.into->Get(key).Map() != nullptr && value.Map() != nullptr;
            MVariant& entry = (*merge.into)[key];
            if (both) {
                waiting.push_back({&entry, value.Map()});
                return;
            }
            MVariant copy(value);
            copy.swap(entry);
            if (copy.IsDefined()) {
                replaced.push_back(std::move(copy));
            }
        });
    }
}

}  // namespace

MVariant MVariant::operator+=(const MVariant& right) {
    if (right.IsDefined()) {
        Add(right);
    }
    return *this;
}

void MVariant::Add(const MVariant& right) {
    switch (Kind()) {
        case MV_EMPTY:
            *this = right;
            break;
        case MV_DOUBLE:
            AddToDouble(right);
            break;
        case MV_STRING:
            AddToText(right);
            break;
        case MV_INT:
        case MV_INT64:
            AddToInteger(right);
            break;
        case MV_VECTOR:
            AddToVector(right);
            break;
        case MV_MAP:
            if (right.Kind() != MV_MAP) {
                Clear();
            } else if (right.Map() != nullptr) {
                merge_maps(*this, *right.Map());
            }
            break;
        case MV_POINTER:
            break;
    }
}

void MVariant::AddToDouble(const MVariant& right) {
    if (right.Kind() == MV_DOUBLE || is_integer(right.Kind())) {
        *this = sum(*this, right);
    } else {
        Clear();
    }
}

void MVariant::AddToText(const MVariant& right) {
    const bool is_byte =
        is_integer(right.Kind()) && static_cast<std::uint32_t>(right.AsInt()) < 256;
    if (payload_ == 0) {
        *this = MVariant(MV_STRING);
    }
    auto& text = *std::bit_cast<std::string*>(payload_);
    if (right.Kind() == MV_STRING) {
        text += right.Text() != nullptr ? *right.Text() : std::string();
    } else if (is_byte) {
        text += static_cast<char>(right.AsInt());
    } else {
        Clear();
    }
}

// Sums wrap around, and the kind stays. A right side of 32 bits leaves the high half of a
// 64-bit number as it is; one of 64 bits gives a 32-bit number a high half, which nothing
// reads.
void MVariant::AddToInteger(const MVariant& right) {
    constexpr std::uint64_t kLow = 0xFFFFFFFF;
    switch (right.Kind()) {
        case MV_DOUBLE:
            *this = sum(*this, right);
            break;
        case MV_INT:
            payload_ = (payload_ & ~kLow) | ((payload_ + right.payload_) & kLow);
            break;
        case MV_INT64:
            payload_ = static_cast<std::uint64_t>(AsInt64()) + right.payload_;
            break;
        default:
            Clear();
    }
}

void MVariant::AddToVector(const MVariant& right) {
    if (right.Kind() != MV_VECTOR) {
        MVariant copy(right);
        append(OwnVector(), std::move(copy));
        return;
    }
    // Found before this vector grows, which moves its elements.
    const VARIANTVECTOR* const elements = right.Vector();
    const std::int32_t count = right.Size();
    for (std::int32_t i = 0; i < count; ++i) {
        // The copy may share this very vector, which then is not to be changed.
        MVariant copy(elements->begin()[i]);
        append(OwnVector(), std::move(copy));
    }
}
