// Every export of the block model family as a row of data, for the sweeps that put
// all of them to the same question.
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "api/zolExportedApi_ReadOnly.h"

namespace zol::testing {

/// Where a call in a sweep writes to, filled with canaries.
struct Outputs {
    Outputs();

    bool operator==(const Outputs&) const = default;

    std::array<double, 6> numbers;
    int code;
    std::array<char, 256> text;
    /// A handle that the call made.
    BlockModelHandle* made = nullptr;
};

/// Where the success exit stands among the calls of the library underneath.
enum class Order {
    kWorkFirst,
    kSuccessFirst,
    /// The error is emptied first, the call is counted last.
    kEmptiedThenCounted,
};

struct Export {
    /// Whether a match in progress does in place of a model. Only where there is a text.
    bool TakesAMatch() const { return std::string_view(no_model_text).ends_with(" matched."); }
    /// Whether it fails without a match in progress.
    bool NeedsAMatch() const {
        return no_model_text != nullptr &&
               std::string_view(no_model_text).ends_with("currently matched.");
    }

    const char* name;
    /// Calls the export with a handle, valid inputs and the outputs.
    long long (*call)(BlockModelHandle* handle, Outputs& outputs);
    long long not_initialised;
    /// Result and text without a model; no text for the functions that don't fail so.
    long long no_model;
    const char* no_model_text;
    /// How many outputs are zeros then; the others stay.
    std::size_t zeros;
    /// The first thing that it asks of the library underneath.
    const char* operation;
    Order order = Order::kWorkFirst;
};

std::span<const Export> block_model_exports();

}  // namespace zol::testing
