#include "support/read_cache.h"

#include <algorithm>
#include <cstring>

namespace zol::support {
namespace {

constexpr std::uint32_t kCapacity = 0x14000;
constexpr std::size_t kGrowth = 10;

/// A failed read is the end of the file, like one that delivers nothing.
void refill(ReadSlot& slot) {
    slot.position = 0;
    slot.filled = os::read_file(slot.handle, slot.buffer.get(), slot.capacity).value_or(0);
    slot.atEnd = slot.filled == 0;
    // Nothing is read into it any more. A handle read behind its close, which no close will
    // release again, so keeps its few words in the table and no buffer.
    if (slot.atEnd) slot.buffer.reset();
}

std::uint32_t read_from(ReadSlot& slot, void* to, std::uint32_t count) {
    std::uint32_t delivered = 0;
    while (delivered < count && !slot.atEnd) {
        const std::uint32_t now = std::min(count - delivered, slot.filled - slot.position);
        if (now == 0) {
            refill(slot);
            continue;
        }
        std::memcpy(static_cast<std::byte*>(to) + delivered, slot.buffer.get() + slot.position,
                    now);
        slot.position += now;
        delivered += now;
    }
    return delivered;
}

}  // namespace

std::uint32_t ReadCache::Read(os::File file, void* to, std::uint32_t count) {
    if (file != last_file_) {
        std::size_t slot = Find(file);
        if (slot == kNoSlot && count < kCapacity) {
            slot = Make(file);
        }
        last_file_ = file;
        last_slot_ = slot;
    }
    return last_slot_ == kNoSlot ? os::read_file(file, to, count).value_or(0)
                                 : read_from(slots_[last_slot_], to, count);
}

std::uint32_t ReadCache::NUnread(os::File file) const {
    const std::size_t slot = Find(file);
    return slot == kNoSlot ? 0 : slots_[slot].filled - slots_[slot].position;
}

std::size_t ReadCache::NBuffers() const {
    const auto has_buffer = [](const ReadSlot& slot) { return slot.buffer != nullptr; };
    return static_cast<std::size_t>(std::count_if(slots_.begin(), slots_.end(), has_buffer));
}

void ReadCache::Release(os::File file) {
    const std::size_t slot = Find(file);
    if (slot != kNoSlot && file != 0) {
        slots_[slot] = ReadSlot{};
    }
    if (last_file_ == file) {
        last_file_ = 0;
        last_slot_ = kNoSlot;
    }
}

std::size_t ReadCache::Find(os::File file) const {
    const auto found = std::find_if(slots_.begin(), slots_.end(),
                                    [&](const ReadSlot& slot) { return slot.handle == file; });
    return found == slots_.end() ? kNoSlot : static_cast<std::size_t>(found - slots_.begin());
}

std::size_t ReadCache::Make(os::File file) {
    std::size_t slot = Find(0);
    if (slot == kNoSlot) {
        slots_.resize(slots_.size() + kGrowth);
        slot = slots_.size() - 1;
    }
    // The buffer before the handle: without memory the slot stays free.
    slots_[slot].buffer = std::make_unique_for_overwrite<std::byte[]>(kCapacity);
    slots_[slot].capacity = kCapacity;
    slots_[slot].handle = file;
    return slot;
}

}  // namespace zol::support
