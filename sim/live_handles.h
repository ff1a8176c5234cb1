// Counting the interface objects the simulated client has handed out and
// that are still held, so that a test can prove an add-in let go of every
// one. Each object handed across the interface gets a handle of its own (as
// a COM client hands out a new reference per call); copies of that Ref share
// the handle. The client's own state never holds a handle, so once everyone
// outside has let go the count is back to zero.
#pragma once

#include <memory>
#include <utility>

#include "client/ref.h"

namespace sim {

class LiveHandles {
 public:
  // The object behind a new counted handle; null stays null.
  template <class T>
  client::Ref<T> Hand(std::shared_ptr<T> object) const {
    if (!object) return nullptr;
    T* raw = object.get();
    return client::Ref<T>(std::make_shared<Handle>(std::move(object), count_), raw);
  }

  long Count() const { return *count_; }

 private:
  // Keeps the object alive while the handle is held; a handle may outlive the
  // client, hence the shared count.
  struct Handle {
    Handle(std::shared_ptr<void> object, std::shared_ptr<long> count)
        : object(std::move(object)), count(std::move(count)) {
      ++*this->count;
    }
    ~Handle() { --*count; }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    std::shared_ptr<void> object;
    std::shared_ptr<long> count;
  };

  std::shared_ptr<long> count_ = std::make_shared<long>(0);
};

}  // namespace sim
