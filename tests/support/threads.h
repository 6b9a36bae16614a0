#pragma once

// Threads for tests of what happens at once.

#include <cstddef>
#include <thread>
#include <vector>

namespace lmw::test {

/// Runs `action(index)` for the indexes below `count` at once and waits for all of them.
template <class Action>
void InThreads(std::size_t count, const Action& action) {
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < count; ++index) {
        threads.emplace_back([&action, index] { action(index); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace lmw::test
