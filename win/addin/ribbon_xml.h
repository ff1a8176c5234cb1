// The add-in's ribbon (version 14 on): the markup for each window kind the
// client asks about, and the names of the callbacks it names, which the
// client looks up by name on the add-in's IDispatch.
//   compose window: a "Qorvane" group first on the Message tab
//                   (TabNewMailMessage), nearest to Send, with the "Qorvane"
//                   button (the compose window's command)
//   main window:    a "Qorvane" group on the Home tab (TabMail) with the
//                   options and about commands
#pragma once

#include <string>
#include <string_view>

namespace addin_ribbon {

inline constexpr const char* kExplorerRibbon = "Microsoft.Outlook.Explorer";
inline constexpr const char* kComposeRibbon = "Microsoft.Outlook.Mail.Compose";

// onAction callbacks: Sub name(control As IRibbonControl).
inline constexpr const char* kOnQorvane = "Qorvane_OnAction";
inline constexpr const char* kOnOptions = "QorvaneOptions_OnAction";
inline constexpr const char* kOnAbout = "QorvaneAbout_OnAction";

// The markup for the ribbon id (matched without case); "" for a window the
// add-in does not customise.
std::string CustomUI(std::string_view ribbonId);

}  // namespace addin_ribbon
