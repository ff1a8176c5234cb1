// Attachments picked in a schedule dialog.
#include "scenario/attachment_picker.h"

#include "dialogs/hand_over.h"

namespace scenario {

AttachmentPicker::AttachmentPicker() : inner_(dialogs::CurrentDialogService()) { dialogs::SetDialogService(this); }

AttachmentPicker::~AttachmentPicker() { dialogs::SetDialogService(&inner_); }

void AttachmentPicker::Pick(std::vector<std::string> references) {
  pending_.insert(pending_.end(), references.begin(), references.end());
}

template <class Show>
void AttachmentPicker::Around(Show&& show) {
  ++depth_;
  struct Leave {
    int& depth;
    ~Leave() { --depth; }
  } leave{depth_};
  show();
  // Only the outermost dialog adds them: the one the opener is waiting for.
  if (depth_ != 1 || pending_.empty() || !g_HandOver.Confirmed() || !g_HandOver.m_MailProps) return;
  auto& attachments = g_HandOver.m_MailProps->m_collAttachments;
  attachments.insert(attachments.end(), pending_.begin(), pending_.end());
  pending_.clear();
}

void AttachmentPicker::ShowOnce() {
  Around([&] { inner_.ShowOnce(); });
}

void AttachmentPicker::ShowRecurrence() {
  Around([&] { inner_.ShowRecurrence(); });
}

void AttachmentPicker::ShowAbout() { inner_.ShowAbout(); }

}  // namespace scenario
