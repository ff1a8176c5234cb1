// The simulated safe-mail library.
#include "sim/sim_safe_mail.h"

#include "base/runtime_error.h"
#include "sim/sim_item.h"
#include "sim/world.h"

namespace sim {

client::Ref<client::SafeMailItem> SimSafeMailFactory::CreateSafeMailItem() {
  world_.Enter("SafeMailFactory", "CreateSafeMailItem");
  if (!world_.safeMailInstalled) qorvane::Raise(qorvane::err::kCannotCreateObject);
  return world_.Hand(std::make_shared<SimSafeMailItem>(world_));
}

void SimSafeMailItem::Item(const client::Ref<client::MailItem>& item) {
  world_.Enter("SafeMailItem", "Item");
  ItemOf(item);  // only the client's own, current item objects are accepted
  item_ = item;
}

ItemPtr SimSafeMailItem::Mail() const {
  if (!item_) qorvane::Raise(qorvane::err::kObjectNotSet);
  return ItemOf(item_);
}

client::Ref<client::SafeRecipients> SimSafeMailItem::Recipients() {
  world_.Enter("SafeMailItem", "Recipients");
  Mail();
  return world_.Hand(std::make_shared<SimSafeRecipients>(world_, shared_from_this()));
}

void SimSafeMailItem::Send() {
  world_.Enter("SafeMailItem", "Send");
  const ItemPtr mail = Mail();
  if (World::Recipients(*mail).empty())
    qorvane::Raise(fault::kUnspecified,
                   "There must be at least one name or distribution list in the To, Cc, or Bcc box.");
  world_.Send(mail);
}

long SimSafeRecipients::Count() {
  world_.Enter("SafeRecipients", "Count");
  return static_cast<long>(World::Recipients(*owner_->Mail()).size());
}

bool SimSafeRecipients::ResolveAll() {
  world_.Enter("SafeRecipients", "ResolveAll");
  for (const std::string& recipient : World::Recipients(*owner_->Mail())) {
    if (!world_.Resolves(recipient)) return false;
  }
  return true;
}

}  // namespace sim
