// Opening the help file at a topic's page.
#include "support/help.h"

#include "platform/addin_folder.h"
#include "platform/file_system.h"
#include "platform/shell.h"

namespace support {

const char* HelpPage(HelpTopic topic) {
  switch (topic) {
#define QORVANE_HELP_TOPIC(name, page) \
  case HelpTopic::name:                \
    return page;
#include "packaging/help/topics.txt"
#undef QORVANE_HELP_TOPIC
  }
  return "index.html";
}

std::string HelpFilePath() { return qorvane::JoinPath(qorvane::AddinFolder(), "Help.chm"); }

bool ShowHelp(HelpTopic topic) { return qorvane::CurrentShell().ShowHelpTopic(HelpFilePath(), HelpPage(topic)); }

}  // namespace support
