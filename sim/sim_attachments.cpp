// Attachments of mail items.
#include "sim/sim_attachments.h"

#include <filesystem>
#include <system_error>

#include "base/runtime_error.h"
#include "sim/world.h"

namespace sim {

ItemData& SimAttachments::Use(const char* member) {
  world_.Enter("Attachments", member);
  if (item_->deleted || item_->generation != generation_) fault::MovedOrDeleted();
  return *item_;
}

long SimAttachments::Count() { return static_cast<long>(Use("Count").attachments.size()); }

client::Ref<client::Attachment> SimAttachments::Item(long index) {
  ItemData& item = Use("Item");
  if (index < 1 || static_cast<std::size_t>(index) > item.attachments.size()) fault::OutOfBounds();
  return world_.Hand(std::make_shared<SimAttachment>(world_, item.attachments[static_cast<std::size_t>(index - 1)]));
}

client::Ref<client::Attachment> SimAttachments::Add(const std::string& source, const std::string& displayName) {
  ItemData& item = Use("Add");
  std::error_code error;
  const std::filesystem::path path(source);
  if (source.empty() || !std::filesystem::is_regular_file(path, error))
    qorvane::Raise(fault::kFileNotFound, "Cannot find this file. Verify the path and file name are correct.");
  AttachmentData attachment;
  attachment.source = source;
  attachment.fileName = path.filename().string();
  attachment.displayName = displayName.empty() ? attachment.fileName : displayName;
  item.attachments.push_back(attachment);
  return world_.Hand(std::make_shared<SimAttachment>(world_, std::move(attachment)));
}

std::string SimAttachment::FileName() {
  world_.Enter("Attachment", "FileName");
  return data_.fileName;
}

std::string SimAttachment::DisplayName() {
  world_.Enter("Attachment", "DisplayName");
  return data_.displayName;
}

}  // namespace sim
