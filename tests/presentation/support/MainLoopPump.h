#pragma once

#include <chrono>
#include <functional>

// Runs the default main context on the calling (GUI) thread for presenter and widget tests.
namespace PresentationTest {

// Iterates until the handoff queue is empty and no event source is ready, or until `limit` passes. False on
// the time limit.
bool pumpUntilIdle(std::chrono::milliseconds limit = std::chrono::seconds(10));

// Iterates until `isDone` is true, then until idle; false when `limit` passes first.
bool pumpUntil(const std::function<bool()>& isDone, std::chrono::milliseconds limit = std::chrono::seconds(30));

} // namespace PresentationTest
