// The safe-mail library of the simulated client: a factory that creates
// safe mail items while the library counts as installed (error 429 when
// not), recipients that resolve when they hold an '@' and are not marked
// unresolvable, and a Send that logs the mail and files it in Sent Items.
#pragma once

#include <memory>

#include "client/safe_mail.h"
#include "sim/item_data.h"

namespace sim {

class World;

class SimSafeMailFactory final : public client::SafeMailFactory {
 public:
  explicit SimSafeMailFactory(World& world) : world_(world) {}
  client::Ref<client::SafeMailItem> CreateSafeMailItem() override;

 private:
  World& world_;
};

class SimSafeMailItem final : public client::SafeMailItem, public std::enable_shared_from_this<SimSafeMailItem> {
 public:
  explicit SimSafeMailItem(World& world) : world_(world) {}
  void Item(const client::Ref<client::MailItem>& item) override;
  client::Ref<client::SafeRecipients> Recipients() override;
  void Send() override;

  // The mail it was given; raises 91 before Item was set.
  ItemPtr Mail() const;

 private:
  World& world_;
  client::Ref<client::MailItem> item_;
};

class SimSafeRecipients final : public client::SafeRecipients {
 public:
  SimSafeRecipients(World& world, std::shared_ptr<SimSafeMailItem> owner) : world_(world), owner_(std::move(owner)) {}
  long Count() override;
  bool ResolveAll() override;

 private:
  World& world_;
  std::shared_ptr<SimSafeMailItem> owner_;
};

}  // namespace sim
