// Work that would call itself through the callbacks of a container, run one item after
// another instead: however deep the items are nested, the stack stays as it is.
#pragma once

#include <new>
#include <utility>
#include <vector>

namespace zol::support {

/// Runs `work` on an item. Within such a run of the same thread the item is only put on
/// the list of the outermost one, which does it before it returns: what the work makes
/// must not be looked at inside.
template <typename Item, void (*work)(const Item&)>
class FlatRecursion {
public:
    static void Run(const Item& item) {
        if (waiting_ == nullptr) {
            RunAll(item);
        } else if (!Defer(item)) {
            // Short of memory for the list, the stack has to do.
            work(item);
        }
    }

private:
    static bool Defer(const Item& item) {
        try {
            waiting_->push_back(item);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    static void RunAll(const Item& first) {
        std::vector<Item> waiting;
        const Outermost outermost(waiting);
        work(first);
        while (!waiting.empty()) {
            const Item next = waiting.back();
            waiting.pop_back();
            work(next);
        }
    }

    class Outermost {
    public:
        explicit Outermost(std::vector<Item>& waiting) { waiting_ = &waiting; }
        ~Outermost() { waiting_ = nullptr; }
        Outermost(const Outermost&) = delete;
        Outermost& operator=(const Outermost&) = delete;
    };

    static inline thread_local std::vector<Item>* waiting_ = nullptr;
};

}  // namespace zol::support
