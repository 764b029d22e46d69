// Names that callers pass in, as the std::string that a library underneath asks for.
//
// A walk passes the same few names for every block. They are kept, so that a call
// neither copies nor allocates for a name that it has seen lately.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

namespace zol::api {

/// One name for the length of one call. `text` is not null.
class NameText {
public:
    explicit NameText(const char* text) : kept_(kept[PlaceOf(text)]) {
        if (kept_.in_use || std::strcmp(kept_.name.c_str(), text) != 0) [[unlikely]] {
            Take(text);
            return;
        }
        kept_.in_use = true;
    }
    NameText(const NameText&) = delete;
    NameText& operator=(const NameText&) = delete;
    ~NameText() {
        if (!own_) [[likely]] {
            kept_.in_use = false;
        }
    }

    const std::string& Get() const { return own_ ? *own_ : kept_.name; }

private:
    // The flag is written with every call and stands well before the letters: a comparison
    // that reads a few bytes past them would wait for it.
    struct alignas(64) Kept {
        /// A library that calls back while it holds the name must find it unchanged.
        bool in_use = false;
        std::string name;
    };
    static constexpr int kPlaceBits = 6;
    static constexpr std::size_t kPlaces = std::size_t{1} << kPlaceBits;

    // Callers pass a name from the same address each time, often one of a row of buffers:
    // the multiplication spreads them (D. E. Knuth, "Sorting and Searching", 6.4).
    static std::size_t PlaceOf(const char* text) {
        const auto address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(text));
        return static_cast<std::size_t>((address * 0x9E3779B97F4A7C15U) >> (64 - kPlaceBits));
    }

    /// Keeps another name in the place, or makes one for this call alone.
    void Take(const char* text);

    /// Plain static storage, as all that the library remembers.
    static std::array<Kept, kPlaces> kept;

    Kept& kept_;
    std::optional<std::string> own_;
};

}  // namespace zol::api
