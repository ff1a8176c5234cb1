// Send/Receive groups. See client/ref.h for the lifecycle contract.
#pragma once

#include <string>

#include "client/ref.h"

namespace client {

class SyncObjectEvents {
 public:
  virtual ~SyncObjectEvents() = default;
  virtual void SyncStart() {}
  virtual void Progress(long state, const std::string& description, long value, long max) {}
  virtual void OnError(long code, const std::string& description) {}
  virtual void SyncEnd() {}
};

class SyncObjects {
 public:
  virtual ~SyncObjects() = default;
  virtual long Count() = 0;
  virtual Ref<SyncObject> Item(long index) = 0;
};

class SyncObject {
 public:
  virtual ~SyncObject() = default;
  virtual std::string Name() = 0;
  virtual void Start() = 0;
  virtual void Stop() = 0;
  virtual Ref<EventSubscription> Advise(SyncObjectEvents* sink) = 0;
};

}  // namespace client
