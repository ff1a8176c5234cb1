// mSpecial: moving marked Inbox mails into the deferred folder.
//
// This runs at every start, and an Inbox can hold tens of thousands of mails:
// asking each one for its class and properties would cost several calls into
// the client per mail. Clients that accept DASL filters (version 12 on) find
// the marked mails with one restriction on the mark's named property; older
// ones are walked. Either way the mails are collected first and moved after,
// because moving out of a collection shifts its indexes.
#include "store/marked_mails.h"

#include <string>
#include <vector>

#include "client/application.h"
#include "client/folders.h"
#include "infra/error_trap.h"
#include "infra/settings.h"
#include "store/folder.h"
#include "store/named_property.h"

namespace mSpecial {
namespace {

bool ClientFiltersByNamedProperty() {
  const std::string major = qorvane::settings::ClientMajorVersion(client::CurrentApplication()->Version());
  return std::atoi(major.c_str()) >= 12;
}

std::vector<client::Ref<client::Item>> MarkedMails(const client::Ref<client::Items>& inbox) {
  std::vector<client::Ref<client::Item>> marked;
  if (ClientFiltersByNamedProperty()) {
    const auto restricted = inbox->Restrict("@SQL=\"" + Main::NamedPropertyUrl(kMarkProperty) + "\" IS NOT NULL");
    const long count = restricted->Count();
    for (long i = 1; i <= count; ++i) {
      auto item = restricted->Item(i);
      if (item->Class() == client::olMail) marked.push_back(std::move(item));
    }
  } else {
    const long count = inbox->Count();
    for (long i = 1; i <= count; ++i) {
      auto item = inbox->Item(i);
      if (item->Class() == client::olMail && item->UserProperties()->Find(kMarkProperty)) marked.push_back(std::move(item));
    }
  }
  return marked;
}

}  // namespace

void SpecialAdd(const client::Ref<client::Item>& item) {
  qorvane::Trap("mSpecial.SpecialAdd", [&] {
    auto properties = item->UserProperties();
    if (!properties->Find(kMarkProperty)) properties->Add(kMarkProperty, client::olText);
  });
}

void SpecialDo() {
  qorvane::Trap("mSpecial.SpecialDo", [&] {
    const auto session = client::CurrentApplication()->GetNamespace("MAPI");
    client::Ref<client::MAPIFolder> deferred;
    for (const long folderType : {client::olFolderInbox, client::olFolderDrafts}) {
      for (const auto& item : MarkedMails(session->GetDefaultFolder(folderType)->Items())) {
        if (auto mark = item->UserProperties()->Find(kMarkProperty)) mark->Delete();
        if (!deferred) deferred = Main::GetQorvaneFolder(true);
        item->Move(deferred);
      }
    }
  });
}

}  // namespace mSpecial
