// Work on many items at once, whose results are taken in the order of the items.
//
// At no time are more results held than a few for each thread, so that memory goes by the cores and not by the bank.
#pragma once

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

// `work(index)` is called for 0 to `count` - 1, on any thread, and `take(index, result)` for each in order, on the
// caller's. Ends early, with what was begun finished and taken, when `stop` becomes true. The first exception of either
// ends it too and comes out of here.
template <typename Result, typename Work, typename Take>
void RunInOrder(std::size_t count, int threads, const std::atomic<bool>& stop, const Work& work, const Take& take) {
  constexpr std::size_t kHeldPerThread = 8;
  const std::size_t most = kHeldPerThread * static_cast<std::size_t>(std::max(threads, 1));
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::optional<Result>> held;  // of the items from `taken` on that were begun
  std::size_t taken = 0, begun = 0;
  bool ended = false;
  std::exception_ptr failure;

  const auto fail = [&](std::exception_ptr reason) {
    const std::lock_guard lock(mutex);
    if (!failure) failure = reason;
    ended = true;
    changed.notify_all();
  };
  const auto run = [&] {
    std::unique_lock lock(mutex);
    for (;;) {
      changed.wait(lock, [&] { return ended || stop || begun == count || held.size() < most; });
      if (ended || stop || begun == count) break;
      const std::size_t index = begun++;
      held.emplace_back();
      lock.unlock();
      std::optional<Result> result(work(index));
      lock.lock();
      held[index - taken] = std::move(result);
      changed.notify_all();
    }
    changed.notify_all();
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
    std::unique_lock lock(mutex);
    for (;;) {
      const auto isReady = [&] { return !held.empty() && held.front().has_value(); };
      const auto isOver = [&] { return ended || (held.empty() && (begun == count || stop)); };
      changed.wait(lock, [&] { return isReady() || isOver(); });
      if (!isReady()) break;
      Result result = std::move(*held.front());
      held.pop_front();
      const std::size_t index = taken++;
      lock.unlock();
      changed.notify_all();
      try {
        take(index, std::move(result));
      } catch (...) {
        fail(std::current_exception());
      }
      lock.lock();
      if (ended) break;
    }
  }
  for (std::thread& thread : pool) thread.join();
  if (failure) std::rethrow_exception(failure);
}
