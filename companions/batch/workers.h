// Work on many items at once, whose results are taken in the order of the items.
//
// At no time are more than some results for each thread held, so that memory goes by the cores and not by the bank.
#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

// Calls `work(index)` for 0 to `count` - 1, on any thread, and `take(index, result)` for each in order, on the
// caller's. Ends early when `stop` becomes true: items that were begun are still finished and taken. The first
// exception of either ends it too and comes out of here. `rest()` is called after some results have been taken, and
// before more are waited for.
//
// Results are taken some at a time, since a wake-up costs more than the work on a small item does, and none waits
// longer than kSoon.
template <typename Result, typename Work, typename Take, typename Rest = void (*)()>
void RunInOrder(
    std::size_t count, int threads, const std::atomic<bool>& stop, const Work& work, const Take& take,
    const Rest& rest = [] {}) {
  constexpr std::size_t kHeldPerThread = 32;
  constexpr auto kSoon = std::chrono::milliseconds(50);
  const std::size_t most = kHeldPerThread * static_cast<std::size_t>(std::max(threads, 1));
  std::mutex mutex;
  std::condition_variable room, ready;
  std::deque<std::optional<Result>> held;  // of the items that were begun, from the first on that is not being taken
  std::size_t taken = 0, begun = 0, done = 0;  // `done`: of those that are held
  bool ended = false;
  std::exception_ptr failure;

  const auto isReady = [&] { return !held.empty() && held.front().has_value(); };
  const auto isOver = [&] { return ended || (held.empty() && (begun == count || stop)); };
  const auto isWorthWaking = [&] {
    return isOver() || (isReady() && (done >= most / 2 || (begun == count && done == held.size())));
  };
  const auto fail = [&](std::exception_ptr reason) {
    const std::lock_guard lock(mutex);
    if (!failure) failure = reason;
    ended = true;
    room.notify_all();
    ready.notify_all();
  };
  const auto run = [&] {
    std::unique_lock lock(mutex);
    for (;;) {
      room.wait(lock, [&] { return ended || stop || begun == count || begun - taken < most; });
      if (ended || stop || begun == count) break;
      const std::size_t index = begun++;
      held.emplace_back();
      lock.unlock();
      std::optional<Result> result(work(index));
      lock.lock();
      held[index - (begun - held.size())] = std::move(result);
      ++done;
      if (isWorthWaking()) ready.notify_one();
    }
    room.notify_all();
    ready.notify_one();
  };

  std::vector<std::thread> pool;
  for (int i = 0; i < threads; ++i) {
    pool.emplace_back([&] {
      try {
        run();
      } catch (...) {
        fail(std::current_exception());
      }
    });
  }
  {
    std::vector<Result> results;
    std::unique_lock lock(mutex);
    while (!ended && !(isOver() && !isReady())) {
      ready.wait_for(lock, kSoon, isWorthWaking);
      for (; isReady(); held.pop_front(), --done) results.push_back(std::move(*held.front()));
      if (results.empty()) continue;
      lock.unlock();
      try {
        for (std::size_t i = 0; i < results.size(); ++i) take(taken + i, std::move(results[i]));
        rest();
      } catch (...) {
        fail(std::current_exception());
      }
      lock.lock();
      taken += results.size();
      results.clear();
      room.notify_all();
    }
  }
  for (std::thread& thread : pool) thread.join();
  if (failure) std::rethrow_exception(failure);
}
