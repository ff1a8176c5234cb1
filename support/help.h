// The add-in's help file, "Help.chm" in the add-in's folder, opened at the
// page that belongs to the dialog asking (the pages are listed in
// packaging/help/topics.txt, which the help check keeps in step with the
// help file).
#pragma once

#include <string>

namespace support {

enum class HelpTopic {
#define QORVANE_HELP_TOPIC(name, page) name,
#include "packaging/help/topics.txt"
#undef QORVANE_HELP_TOPIC
};

// The page of a topic inside the help file: "dialog_once.html".
const char* HelpPage(HelpTopic topic);

// The add-in's folder, the separator and "Help.chm".
std::string HelpFilePath();

// Shows the topic's page through the shell. A missing help file or viewer
// is not an error the user is told about: false, nothing shown.
bool ShowHelp(HelpTopic topic);

}  // namespace support
