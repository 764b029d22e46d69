// A list that grows without being copied.
//
// How many points a mesh file has is known when it has been read. A vector that doubles
// holds the old and the new list at once while it moves; large blocks of realloc are moved
// by their page tables, so that memory stays that of the elements.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <type_traits>

namespace zol::engine {

template <class T>
class GrowingArray {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    void Add(const T& value) {
        if (size_ == room_) {
            // The value may be one of this list.
            const T kept = value;
            MakeRoom(size_ + 1);
            data_.get()[size_++] = kept;
            return;
        }
        data_.get()[size_++] = value;
    }

    /// Room for `count` elements in all. What is not filled takes no memory in a large list.
    void Reserve(std::size_t count) {
        if (count > room_) SetRoom(count);
    }

    /// Cuts the list, or makes it longer by elements that are not set.
    void SetSize(std::size_t count) {
        Reserve(count);
        size_ = count;
    }

    /// Gives back what is beyond the elements.
    void Trim() {
        if (room_ > size_) SetRoom(size_);
    }

    std::size_t Size() const { return size_; }
    bool IsEmpty() const { return size_ == 0; }
    T& operator[](std::size_t i) { return data_.get()[i]; }
    const T& operator[](std::size_t i) const { return data_.get()[i]; }
    std::span<const T> View() const { return {data_.get(), size_}; }
    std::span<T> View() { return {data_.get(), size_}; }

private:
    struct Free {
        void operator()(T* memory) const { std::free(memory); }
    };

    void MakeRoom(std::size_t count) {
        constexpr std::size_t kLeast = 64;
        SetRoom(count < kLeast ? kLeast : count + count / 2);
    }

    void SetRoom(std::size_t room) {
        if (room == 0) {
            data_.reset();
        } else {
            if (room > static_cast<std::size_t>(-1) / 2 / sizeof(T)) throw std::bad_alloc();
            void* const moved = std::realloc(data_.get(), room * sizeof(T));
            if (moved == nullptr) throw std::bad_alloc();
            static_cast<void>(data_.release());
            data_.reset(static_cast<T*>(moved));
        }
        room_ = room;
    }

    std::unique_ptr<T, Free> data_;
    std::size_t size_ = 0;
    std::size_t room_ = 0;
};

}  // namespace zol::engine
