// WaitingChanges: what threads have changed in the document, until the list has shown it on its own.
//
// A message that tells the list of them brings no pointer along, since any program might send one.
#pragma once

#include <mutex>
#include <utility>
#include <vector>

#include "document/documentlistener.h"

class WaitingChanges {
 public:
  void Put(const DocumentChanges& changes) {
    const std::lock_guard locked(lock_);
    changes_.push_back(changes);
  }
  // Gives all of them in their order, since it may be the message of any that asks.
  std::vector<DocumentChanges> Take() {
    const std::lock_guard locked(lock_);
    return std::exchange(changes_, {});
  }

 private:
  std::mutex lock_;
  std::vector<DocumentChanges> changes_;
};
