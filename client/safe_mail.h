// The safe-mail library: sends a mail item and resolves its recipients
// without the client's security prompts. See client/ref.h for the lifecycle
// contract.
#pragma once

#include "client/ref.h"

namespace client {

class SafeRecipients {
 public:
  virtual ~SafeRecipients() = default;
  virtual long Count() = 0;
  // False when a recipient does not resolve.
  virtual bool ResolveAll() = 0;
};

class SafeMailItem {
 public:
  virtual ~SafeMailItem() = default;
  virtual void Item(const Ref<MailItem>& item) = 0;
  virtual Ref<SafeRecipients> Recipients() = 0;
  virtual void Send() = 0;
};

// CreateObject("Redemption.SafeMailItem"): raises 429 when the library is not
// installed. Provided by whichever client implementation is connected.
class SafeMailFactory {
 public:
  virtual ~SafeMailFactory() = default;
  virtual Ref<SafeMailItem> CreateSafeMailItem() = 0;
};

SafeMailFactory& CurrentSafeMailFactory();
void SetSafeMailFactory(SafeMailFactory* factory);

}  // namespace client
