// Life and copying. Containers are copied and released one after another and not one
// within the other, whatever their depth.
#include "support/variant.h"

#include <bit>
#include <limits>
#include <utility>

#include "support/c_variant.h"
#include "support/flat_recursion.h"
#include "support/string_map.h"
#include "support/value_vector.h"

namespace {

using VariantMap = VStringMap<MVariant>;
using zol::support::FlatRecursion;

/// A container that nobody refers to any more; one of the two is null.
struct Unowned {
    VARIANTVECTOR* vector;
    VariantMap* map;
};

// Its elements come back here through the callbacks of the storage.
void delete_container(const Unowned& container) {
    delete container.vector;
    delete container.map;
}

using Deletion = FlatRecursion<Unowned, delete_container>;

/// A map to be copied, and where the address of the copy goes.
struct Copying {
    const VariantMap* source;
    std::uint64_t* copy;
};

// Maps in the map come back here through the callback that clones values.
void copy_map(const Copying& map) {
    *map.copy = std::bit_cast<std::uint64_t>(map.source != nullptr ? new VariantMap(*map.source)
                                                                   : new VariantMap);
}

using MapCopy = FlatRecursion<Copying, copy_map>;

template <typename T>
std::uint64_t word_of(T* object) {
    static_assert(sizeof(void*) == sizeof(std::uint64_t));
    return std::bit_cast<std::uint64_t>(object);
}

VARIANTVECTOR* new_vector() {
    auto* const vector = new VARIANTVECTOR;
    vector->references = 1;
    return vector;
}

}  // namespace

const MVariant& MVariant::Empty() {
    // Never destroyed: it has to outlive whatever asks for it.
    static const MVariant* const kEmpty = new MVariant;
    return *kEmpty;
}

MVariant::MVariant(MVariantKind kind) {
    switch (kind) {
        case MV_STRING:
            Take(kind, word_of(new std::string));
            break;
        case MV_VECTOR:
            Take(kind, word_of(new_vector()));
            break;
        case MV_MAP:
            Take(kind, word_of(new VariantMap));
            break;
        default:
            Take(kind <= MV_INT64 ? kind : MV_EMPTY, 0);
    }
}

// The first constructor has ended before anything is copied, so that an exception
// releases what is there.
MVariant::MVariant(const MVariant& other) : MVariant() {
    switch (other.Kind()) {
        case MV_STRING:
            Take(MV_STRING, word_of(other.Text() != nullptr ? new std::string(*other.Text())
                                                            : new std::string));
            break;
        case MV_VECTOR:
            if (other.payload_ == 0) {
                Take(MV_VECTOR, word_of(new_vector()));
            } else {
                // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.Assign): a vector is counted
                ++std::bit_cast<VARIANTVECTOR*>(other.payload_)->references;
                Take(MV_VECTOR, other.payload_);
            }
            break;
        case MV_MAP:
            // Null until the copy is there, which may be later than here.
            Take(MV_MAP, 0);
            MapCopy::Run({other.Map(), &payload_});
            break;
        default:
            Take(other.Kind(), other.payload_);
    }
}

MVariant::MVariant(std::int64_t number) noexcept {
    *this = number;
}

MVariant::MVariant(double number) noexcept
    : kind_(MV_DOUBLE), payload_(std::bit_cast<std::uint64_t>(number)) {}

MVariant::MVariant(std::string text)
    : kind_(MV_STRING), payload_(word_of(new std::string(std::move(text)))) {}

MVariant::MVariant(const char* text) : MVariant(std::string(text != nullptr ? text : "")) {}

MVariant MVariant::OfWord(MVariantKind kind, std::uint64_t word) noexcept {
    MVariant value;
    if (kind == MV_DOUBLE || kind == MV_POINTER || kind == MV_INT64) {
        value.Take(kind, word);
    } else if (kind == MV_INT) {
        value.Take(kind, static_cast<std::uint32_t>(word));
    }
    return value;
}

MVariant& MVariant::operator=(const MVariant& other) {
    MVariant(other).swap(*this);
    return *this;
}

MVariant& MVariant::operator=(MVariant&& other) noexcept {
    MVariant(std::move(other)).swap(*this);
    return *this;
}

MVariant& MVariant::operator=(double number) noexcept {
    return *this = MVariant(number);
}

MVariant& MVariant::operator=(std::int64_t number) noexcept {
    const auto low = static_cast<std::int32_t>(number);
    Clear();
    if (low == number) {
        Take(MV_INT, static_cast<std::uint32_t>(low));
    } else {
        Take(MV_INT64, static_cast<std::uint64_t>(number));
    }
    return *this;
}

MVariant& MVariant::operator=(const CVariant* source) {
    return *this = MVariant(source);
}

void MVariant::swap(MVariant& other) noexcept {
    std::swap(kind_, other.kind_);
    std::swap(payload_, other.payload_);
}

void MVariant::Release() noexcept {
    // Nothing refers to the content by way of this value while it goes.
    MVariantKind kind = Kind();
    const std::uint64_t word = std::exchange(payload_, 0);
    kind_ = MV_EMPTY;
    if (word == 0) {
        return;
    }
    if (kind == MV_STRING) {
        delete std::bit_cast<std::string*>(word);
    } else if (kind == MV_MAP) {
        Deletion::Run({nullptr, std::bit_cast<VariantMap*>(word)});
    } else if (auto* const vector = std::bit_cast<VARIANTVECTOR*>(word);
               --vector->references <= 0) {
        Deletion::Run({vector, nullptr});
    }
}

void MVariant::Take(MVariantKind kind, std::uint64_t payload) noexcept {
    kind_ = kind;
    payload_ = payload;
}

void MVariant::SetWord(std::uint64_t word) noexcept {
    if (Owns()) {
        Clear();
    }
    payload_ = word;
}

const std::string* MVariant::Text() const noexcept {
    return kind_ == MV_STRING ? std::bit_cast<const std::string*>(payload_) : nullptr;
}

const VARIANTVECTOR* MVariant::Vector() const noexcept {
    return kind_ == MV_VECTOR ? std::bit_cast<const VARIANTVECTOR*>(payload_) : nullptr;
}

const VStringMap<MVariant>* MVariant::Map() const noexcept {
    return kind_ == MV_MAP ? std::bit_cast<const VariantMap*>(payload_) : nullptr;
}
