// Interface objects over one stored item: the mail item, the appointment
// with its recurrence pattern, and any other kind of item. Each object
// remembers the item's generation when it was made; after a Move or Delete
// the item's generation moves on and every call on an older object raises
// "The item has been moved or deleted", as the client's stale objects do.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "client/items.h"
#include "sim/item_data.h"

namespace sim {

class World;

// What all three kinds of item objects share; the interface name is the
// counted operations' prefix ("MailItem", "AppointmentItem", "Item").
template <class Interface>
class ItemObject : public Interface {
 public:
  ItemObject(World& world, ItemPtr data, std::string_view interfaceName);

  long Class() override;
  std::string EntryID() override;
  std::string Subject() override;
  void Subject(const std::string& value) override;
  client::Ref<client::UserProperties> UserProperties() override;
  client::Ref<client::MAPIFolder> Parent() override;
  void Save() override;
  void Delete() override;
  client::Ref<client::Item> Copy() override;
  client::Ref<client::Item> Move(const client::Ref<client::MAPIFolder>& folder) override;
  client::Ref<client::MailItem> AsMailItem() override;
  client::Ref<client::AppointmentItem> AsAppointmentItem() override;

  const ItemPtr& Data() const { return data_; }
  bool Live() const { return !data_->deleted && data_->generation == generation_; }

 protected:
  // Counts the call, then checks that this object still stands for the item.
  ItemData& Use(std::string_view member);

  World& world_;
  ItemPtr data_;
  std::uint64_t generation_;
  std::string_view interfaceName_;
};

class SimMailItem final : public ItemObject<client::MailItem> {
 public:
  SimMailItem(World& world, ItemPtr data) : ItemObject(world, std::move(data), "MailItem") {}
  std::string Body() override;
  void Body(const std::string& value) override;
  std::string To() override;
  void To(const std::string& value) override;
  bool Sent() override;
  client::Ref<client::Attachments> Attachments() override;
  void Display() override;
  void Close(long saveMode) override;
};

class SimAppointmentItem final : public ItemObject<client::AppointmentItem> {
 public:
  SimAppointmentItem(World& world, ItemPtr data) : ItemObject(world, std::move(data), "AppointmentItem") {}
  double Start() override;
  void Start(double value) override;
  double End() override;
  void End(double value) override;
  bool ReminderSet() override;
  void ReminderSet(bool value) override;
  client::Ref<client::RecurrencePattern> GetRecurrencePattern() override;
};

class SimOtherItem final : public ItemObject<client::Item> {
 public:
  SimOtherItem(World& world, ItemPtr data) : ItemObject(world, std::move(data), "Item") {}
};

// The item behind an interface object that the simulated client handed out;
// raises 13 for an object of another client and the moved-or-deleted error
// for a stale one.
ItemPtr ItemOf(const client::Ref<client::Item>& item);

}  // namespace sim
