// A depth-first walk of a value and all in it: each container, then what is in it, a
// vector in order and a map in the order of its table.
#pragma once

#include <cstdint>
#include <forward_list>

#include "support/strtab.h"
#include "support/variant.h"

/// `for (auto at = v.Begin(); at != v.End(); ++at) { ... *at ... }`
/// Values may be changed on the way; containers that the walk is in must keep their
/// elements. Entering a shared vector makes it the value's own.
class VariantWalker {
public:
    /// Past the end.
    VariantWalker() = default;
    explicit VariantWalker(MVariant& root);

    /// Only to be called before the end.
    MVariant& operator*() const { return frames_.front().Current(); }
    MVariant* operator->() const { return &**this; }
    /// Does nothing at the end.
    VariantWalker& operator++();
    /// Two walkers are equal only when both are at the end.
    bool operator==(const VariantWalker& other) const {
        return frames_.empty() && other.frames_.empty();
    }

private:
    /// A value that the walk is in: first before it, then at one after another of the
    /// values that are in it.
    struct Frame {
        explicit Frame(MVariant& walked) : value(&walked) {}

        MVariant& Current() const;
        /// False for a value that holds no others.
        bool Start();
        void Step();
        bool IsAtEnd() const { return is_vector ? cursor == nullptr : entry.bucket < 0; }

        bool is_started = false;
        bool is_vector = false;
        std::int32_t index = 0;
        MVariant* cursor = nullptr;  // at the index of a vector; null past the end
        strtab_iter entry{nullptr, -1, 0, nullptr, nullptr};
        MVariant* value;
    };

    std::forward_list<Frame> frames_;
};
