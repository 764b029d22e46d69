#include "engine/formats/parallel.h"

#include <algorithm>
#include <exception>
#include <system_error>
#include <thread>
#include <vector>

namespace zol::engine {

unsigned worker_count() {
    // Reading is bound by memory beyond a few cores.
    return std::clamp(std::thread::hardware_concurrency(), 1U, 8U);
}

void run_workers(unsigned workers, const std::function<void(unsigned)>& work) {
    std::vector<std::exception_ptr> failures(workers);
    const auto guarded_work = [&](unsigned worker) {
        try {
            work(worker);
        } catch (...) {
            failures[worker] = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> threads;
        threads.reserve(workers);
        for (unsigned worker = 1; worker < workers; ++worker) {
            try {
                threads.emplace_back(guarded_work, worker);
            } catch (const std::system_error&) {
                break;
            }
        }
        guarded_work(0);
    }
    for (const std::exception_ptr& failure : failures) {
        if (failure) {
            std::rethrow_exception(failure);
        }
    }
}

}  // namespace zol::engine
