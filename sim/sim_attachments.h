// The attachments of a simulated mail item. Adding one needs the file to
// exist, as the client reads it at once; the item keeps its source path and
// display name for the send log.
#pragma once

#include <string>

#include "client/items.h"
#include "sim/item_data.h"

namespace sim {

class World;

class SimAttachments final : public client::Attachments {
 public:
  SimAttachments(World& world, ItemPtr item) : world_(world), item_(std::move(item)), generation_(item_->generation) {}
  long Count() override;
  client::Ref<client::Attachment> Item(long index) override;
  client::Ref<client::Attachment> Add(const std::string& source, const std::string& displayName) override;

 private:
  ItemData& Use(const char* member);

  World& world_;
  ItemPtr item_;
  std::uint64_t generation_;
};

class SimAttachment final : public client::Attachment {
 public:
  SimAttachment(World& world, AttachmentData data) : world_(world), data_(std::move(data)) {}
  std::string FileName() override;
  std::string DisplayName() override;

 private:
  World& world_;
  AttachmentData data_;
};

}  // namespace sim
