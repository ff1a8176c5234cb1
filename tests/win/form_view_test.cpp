// The Win32 view against the real dialog templates, under wine: each dialog
// opens through the view, shows the form's state in its controls and tells
// the form what is done to them, as a person would do it.
#include <gtest/gtest.h>

#include <windows.h>
#include <commctrl.h>
#include <oleauto.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "base/runtime_error.h"
#include "dialog_driver.h"
#include "platform/form.h"
#include "platform/form_templates.h"
#include "platform/screen_metrics.h"
#include "sample_forms.h"
#include "scoped_screen.h"
#include "win/com/common_controls.h"
#include "win/com/wide_text.h"

namespace qorvane::testing {
namespace {

using forms::Control;
using forms::ControlKind;

bool Checked(HWND button) { return SendMessageW(button, BM_GETCHECK, 0, 0) == BST_CHECKED; }
bool Visible(HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; }

// The thread's dialogs that show a form, shown or hidden.
std::vector<HWND> DialogsOf(std::string_view form) {
  std::vector<HWND> found;
  struct Search {
    std::string_view form;
    std::vector<HWND>* found;
  } search{form, &found};
  EnumThreadWindows(
      GetCurrentThreadId(),
      [](HWND window, LPARAM data) -> BOOL {
        auto* s = reinterpret_cast<Search*>(data);
        if (ShowsForm(window, s->form)) s->found->push_back(window);
        return TRUE;
      },
      reinterpret_cast<LPARAM>(&search));
  return found;
}

// What a person sees: the window's state against the form's, control by control.
void ExpectShowsForm(HWND dialog, const SampleForm& form) {
  const forms::FormTemplate* layout = forms::FindFormTemplate(form.name);
  ASSERT_NE(layout, nullptr);
  EXPECT_EQ(TextOf(dialog), WideFromUtf8(form.caption));
  for (const Control& control : form.controls) {
    const int id = forms::TemplateControlId(*layout, control.name);
    if (control.kind == ControlKind::Page) {
      EXPECT_EQ(id, 0) << control.name << ": a page has no window";
      continue;
    }
    HWND window = GetDlgItem(dialog, id);
    ASSERT_NE(window, nullptr) << form.name << " has no window for " << control.name;
    if (!control.caption.empty()) {
      EXPECT_EQ(TextOf(window), WideFromUtf8(control.caption)) << control.name;
    }
    if (control.kind == ControlKind::OptionButton || control.kind == ControlKind::CheckBox) {
      EXPECT_EQ(Checked(window), control.checked) << control.name;
    }
    if (control.kind == ControlKind::TextBox) {
      EXPECT_EQ(TextOf(window), WideFromUtf8(control.text)) << control.name;
    }
    EXPECT_EQ(IsWindowEnabled(window) != FALSE, control.enabled) << control.name;
    bool shown = control.visible;
    if (!control.container.empty() && form[control.container].kind == ControlKind::Page) {
      shown = shown && form[control.container].visible;
    }
    EXPECT_EQ(Visible(window), shown) << control.name;
  }
  // Every window of the template shows a control of the form (or is a line).
  for (HWND child = GetWindow(dialog, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
    const int id = GetDlgCtrlID(child);
    if (id == -1 || id == 0xFFFF) continue;
    EXPECT_FALSE(forms::TemplateControlName(*layout, id).empty()) << form.name << ": window " << id << " shows nothing";
  }
}

class EachDialog : public ::testing::TestWithParam<const char*> {};

TEST_P(EachDialog, OpensThroughTheViewShowsItsFormInV6ControlsAndClosesByTheCloseBox) {
  auto form = SampleByName(GetParam());
  long widthAtLoad = 0;
  form->onLoad = [&](SampleForm& f) { widthAtLoad = f.rect.width; };
  DialogDriver driver;
  driver.Do(GetParam(), [&](HWND dialog) {
    ExpectShowsForm(dialog, *form);
    // comctl32 v6 through the module's manifest: only v6 buttons measure themselves.
    HWND button = ControlWindow(dialog, form->name, form->name == "frmOnce" ? "btnOk" : "btnOK");
    SIZE ideal = {};
    EXPECT_TRUE(SendMessageW(button, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&ideal)));
    EXPECT_GT(ideal.cx, 0);
    // The system's dialog font at 8 points, not the old bitmap System font.
    LOGFONTW font = {};
    GetObjectW(reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0)), sizeof(font), &font);
    EXPECT_NE(std::wstring(font.lfFaceName), L"System");
    EXPECT_NE(std::wstring(font.lfFaceName), L"");
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    EXPECT_NEAR(widthAtLoad, (frame.right - frame.left) * CurrentScreenMetrics().unitsPerPixelX, 1.0)
        << "the form knows its size at Load";
  });
  driver.CloseBox(GetParam());
  forms::ShowModal(*form);
  EXPECT_TRUE(driver.Done());
  EXPECT_FALSE(driver.TimedOut());
  EXPECT_TRUE(form->unloaded);
  EXPECT_EQ(form->calls, (std::vector<std::string>{"Load", "QueryClose"}));
  EXPECT_TRUE(DialogsOf(GetParam()).empty());
}

INSTANTIATE_TEST_SUITE_P(FormView, EachDialog, ::testing::Values("frmOnce", "frmRecurrence", "frmAttachments", "frmAbout"));

TEST(FormView, AFormWithoutATemplateFailsClearlyAsCancelled) {
  SampleForm form;
  form.name = "frmNowhere";
  try {
    forms::ShowModal(form);
    FAIL() << "no error raised";
  } catch (const RuntimeError& error) {
    EXPECT_NE(error.Description().find("frmNowhere"), std::string::npos) << error.Description();
  }
  EXPECT_TRUE(form.unloaded);
  EXPECT_TRUE(form.calls.empty());
}

TEST(FormView, ButtonsAreClassicOutsideTheModulesActivationContext) {
  // The check above means something only if the process itself does not ask for v6.
  HWND button = CreateWindowExW(0, L"BUTTON", L"x", WS_POPUP, 0, 0, 50, 20, nullptr, nullptr, nullptr, nullptr);
  SIZE ideal = {};
  EXPECT_FALSE(SendMessageW(button, BCM_GETIDEALSIZE, 0, reinterpret_cast<LPARAM>(&ideal)));
  DestroyWindow(button);
  EXPECT_FALSE(com::ContextFromManifest(GetModuleHandleW(L"kernel32.dll"), com::kModuleManifestResource))
      << "a module without a manifest gives no context";
}

TEST(FormView, PickersShowTheCustomFormatAndSpinAndReportTheUsersValues) {
  auto form = SampleOnce();
  const double nextDay = kSampleSendTime + 1;
  const double quarterToEleven = 45719.0 + 10.75 / 24.0;
  DialogDriver driver;
  driver.Do("frmOnce", [&](HWND dialog) {
    HWND time = ControlWindow(dialog, "frmOnce", "ctlTime");
    EXPECT_EQ(TextOf(time), L"9:30 AM");
    EXPECT_TRUE(GetWindowLongW(time, GWL_STYLE) & DTS_UPDOWN);
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmOnce", "ctlDate")), L"3/3/2025");
  });
  driver.SetDate("frmOnce", "ctlDate", nextDay).SetDate("frmOnce", "ctlTime", quarterToEleven);
  driver.Do("frmOnce", [&](HWND dialog) {
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmOnce", "ctlTime")), L"10:45 AM");
  });
  driver.Click("frmOnce", "optRecurrence");
  driver.Do("frmOnce", [&](HWND dialog) {
    EXPECT_TRUE(Checked(ControlWindow(dialog, "frmOnce", "optRecurrence")));
    EXPECT_FALSE(Checked(ControlWindow(dialog, "frmOnce", "optOnce"))) << "the form cleared it, the view showed it";
  });
  driver.Click("frmOnce", "optRecurrence");  // on already: no click
  driver.Click("frmOnce", "btnOk");
  forms::ShowModal(*form);

  ASSERT_TRUE(driver.Done());
  EXPECT_EQ(form->Actions(), (std::vector<std::string>{"Load", "Change ctlDate", "Change ctlTime",
                                                      "Click optRecurrence", "Click btnOk"}));
  EXPECT_EQ(form->ActiveAt("Change ctlDate"), "ctlDate");
  EXPECT_EQ(form->ActiveAt("Validate ctlDate"), "ctlDate") << "validated while still the active control";
  EXPECT_EQ(form->ActiveAt("Click optRecurrence"), "optRecurrence");
  EXPECT_DOUBLE_EQ((*form)["ctlDate"].value, nextDay);
  EXPECT_NEAR((*form)["ctlTime"].value, quarterToEleven, 1e-6);
  EXPECT_TRUE((*form)["optRecurrence"].checked);
  EXPECT_FALSE((*form)["optOnce"].checked);
}

TEST(FormView, WhatAHandlerChangesIsShownWithoutNotifyingTheForm) {
  auto form = SampleOnce();
  HWND timeBefore = nullptr;
  form->onClick = [](SampleForm& f, std::string_view control) {
    if (control == "btnAttachments") {
      f["ctlDate"].value += 7;
      f["ctlTime"].value += 1.0 / 24;
      f["ctlTime"].upDown = !f["ctlTime"].upDown;
      f["Frame3"].caption = "Pick a day";
      f["optOnce"].enabled = false;
      f["btnHelp"].visible = false;
      f.caption = "Changed";
    }
    if (control == "btnOk") f.unloaded = true;
  };
  DialogDriver driver;
  driver.Do("frmOnce", [&](HWND dialog) { timeBefore = ControlWindow(dialog, "frmOnce", "ctlTime"); });
  driver.Click("frmOnce", "btnAttachments");
  driver.Do("frmOnce", [&](HWND dialog) {
    ExpectShowsForm(dialog, *form);
    HWND time = ControlWindow(dialog, "frmOnce", "ctlTime");
    EXPECT_FALSE(GetWindowLongW(time, GWL_STYLE) & DTS_UPDOWN) << "rebuilt as a drop-down";
    EXPECT_EQ(TextOf(time), L"10:30 AM") << "same format and value after the rebuild";
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmOnce", "ctlDate")), L"3/10/2025");
    EXPECT_EQ(GetNextDlgTabItem(dialog, ControlWindow(dialog, "frmOnce", "ctlDate"), FALSE), time)
        << "the rebuilt picker keeps its place in the tab order";
  });
  driver.Click("frmOnce", "btnAttachments");  // and back to the spinner
  driver.Do("frmOnce", [&](HWND dialog) {
    HWND time = ControlWindow(dialog, "frmOnce", "ctlTime");
    EXPECT_TRUE(GetWindowLongW(time, GWL_STYLE) & DTS_UPDOWN);
    EXPECT_NE(time, timeBefore);
    EXPECT_EQ(TextOf(time), L"11:30 AM");
  });
  driver.Click("frmOnce", "btnOk");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  EXPECT_EQ(form->Actions(),
            (std::vector<std::string>{"Load", "Click btnAttachments", "Click btnAttachments", "Click btnOk"}))
      << "no Change for the view's own writes";
}

TEST(FormView, RecurrencePagesShowOneAtATimeAndEveryKindOfControlReports) {
  auto form = SampleRecurrence();
  DialogDriver driver;
  const std::pair<const char*, const char*> pages[] = {{"optDaily", "txtInterval1"},
                                                       {"optMonthly", "cboInstance3"},
                                                       {"optYearly", "cboMonthOfYear44"},
                                                       {"optWeekly", "arWeekDays(6)"}};
  for (const auto& [option, member] : pages) {
    driver.Click("frmRecurrence", option);
    driver.Do("frmRecurrence", [&, option = std::string(option), member = std::string(member)](HWND dialog) {
      SCOPED_TRACE(option);
      ExpectShowsForm(dialog, *form);
      EXPECT_TRUE(IsWindowVisible(ControlWindow(dialog, "frmRecurrence", member)));
    });
  }
  driver.Do("frmRecurrence", [&](HWND dialog) {
    HWND masks = ControlWindow(dialog, "frmRecurrence", "cboDayOfWeekMask3");
    EXPECT_EQ(SendMessageW(masks, CB_GETCOUNT, 0, 0), 10);
    EXPECT_EQ(SendMessageW(masks, CB_GETITEMDATA, 2, 0), 65) << "weekend day";
    EXPECT_EQ(SendMessageW(masks, CB_GETCURSEL, 0, 0), 4);
  });
  driver.Pick("frmRecurrence", "cboDayOfWeekMask3", 2);
  driver.Click("frmRecurrence", "arWeekDays(3)");
  driver.Type("frmRecurrence", "txtInterval2", "34");
  driver.Do("frmRecurrence", [&](HWND dialog) {
    EXPECT_TRUE(Checked(ControlWindow(dialog, "frmRecurrence", "arWeekDays(3)")));
    EXPECT_TRUE(Checked(ControlWindow(dialog, "frmRecurrence", "arWeekDays(1)")));
  });
  driver.Click("frmRecurrence", "arWeekDays(1)");
  driver.Click("frmRecurrence", "btnOK");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());

  const SampleForm& f = *form;
  EXPECT_EQ(f["cboDayOfWeekMask3"].listIndex, 2);
  EXPECT_EQ(f["cboDayOfWeekMask3"].text, "weekend day");
  EXPECT_TRUE(f["arWeekDays(3)"].checked);
  EXPECT_FALSE(f["arWeekDays(1)"].checked);
  EXPECT_EQ(f["txtInterval2"].text, "34");
  EXPECT_EQ(f["txtInterval2"].selStart, 2);
  EXPECT_EQ(f.Count("Change txtInterval2"), 2) << "one a character typed";
  EXPECT_EQ(f.Count("Click cboDayOfWeekMask3"), 1);
  EXPECT_EQ(f.Count("Click arWeekDays(1)"), 1);
  EXPECT_TRUE(f["optWeekly"].checked);
  EXPECT_FALSE(f["optDaily"].checked);
  EXPECT_EQ(f.ActiveAt("Change txtInterval2"), "txtInterval2");
}

TEST(FormView, ARefusedValidationKeepsTheFocusAndDropsTheClickThatMovedIt) {
  auto form = SampleRecurrence();
  form->onValidate = [](SampleForm& f, std::string_view control) {
    return control != "txtOccurrences" || f["txtOccurrences"].text != "0";
  };
  DialogDriver driver;
  driver.Type("frmRecurrence", "txtOccurrences", "0");
  driver.Click("frmRecurrence", "btnOK");
  driver.Do("frmRecurrence", [&](HWND dialog) {
    EXPECT_EQ(GetFocus(), ControlWindow(dialog, "frmRecurrence", "txtOccurrences"));
    EXPECT_EQ(form->activeControl, "txtOccurrences");
    EXPECT_EQ(form->Count("Click btnOK"), 0);
  });
  driver.Type("frmRecurrence", "txtOccurrences", "5");
  driver.Focus("frmRecurrence", "txtInterval2");
  driver.Do("frmRecurrence", [&](HWND dialog) {
    EXPECT_EQ(GetFocus(), ControlWindow(dialog, "frmRecurrence", "txtInterval2"));
    EXPECT_EQ(form->activeControl, "txtInterval2");
  });
  driver.Click("frmRecurrence", "btnOK");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  EXPECT_EQ(form->Count("Validate txtOccurrences"), 2);
  EXPECT_EQ(form->Count("Click btnOK"), 1);
  EXPECT_EQ((*form)["txtOccurrences"].text, "5");
}

TEST(FormView, CancelClosesWithoutValidatingTheFieldItLeaves) {
  auto form = SampleRecurrence();
  form->onValidate = [](SampleForm& f, std::string_view control) {
    return control != "txtOccurrences" || f["txtOccurrences"].text != "0";
  };
  DialogDriver driver;
  driver.Type("frmRecurrence", "txtOccurrences", "0");
  // Onto Cancel and back: the field still owes its validation.
  driver.Focus("frmRecurrence", "btnCancel").Focus("frmRecurrence", "txtInterval2");
  driver.Do("frmRecurrence", [&](HWND dialog) {
    EXPECT_EQ(GetFocus(), ControlWindow(dialog, "frmRecurrence", "txtOccurrences"));
    EXPECT_EQ(form->Count("Validate txtOccurrences"), 1);
  });
  driver.Click("frmRecurrence", "btnCancel");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  EXPECT_EQ(form->Count("Validate txtOccurrences"), 1);
  EXPECT_EQ(form->calls.back(), "Click btnCancel");
}

TEST(FormView, ListRowsSelectedTogetherReachTheFormAsOneClick) {
  auto form = SampleAttachments();
  form->onClick = [](SampleForm& f, std::string_view control) {
    auto& rows = f["lvFiles"].rows;
    if (control == "lvFiles") {
      f["btnRemove"].enabled = std::any_of(rows.begin(), rows.end(), [](const forms::ListRow& r) { return r.selected; });
    } else if (control == "btnRemove") {
      std::erase_if(rows, [](const forms::ListRow& r) { return r.selected; });
      f["btnRemove"].enabled = false;
    } else if (control == "btnOK") {
      f.unloaded = true;
    }
  };
  form->onChange = [](SampleForm& f, std::string_view control) {
    if (control != "txtIgnore") return;
    std::string& text = f["txtIgnore"].text;
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    f["txtIgnore"].selStart = static_cast<int>(text.size());
  };
  DialogDriver driver;
  driver.Do("frmAttachments", [&](HWND dialog) {
    HWND list = ControlWindow(dialog, "frmAttachments", "lvFiles");
    EXPECT_FALSE(GetWindowLongW(list, GWL_STYLE) & LVS_SINGLESEL);
    EXPECT_TRUE(SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0) & LVS_EX_FULLROWSELECT);
    DWORD start = 0;
    SendMessageW(ControlWindow(dialog, "frmAttachments", "txtIgnore"), EM_GETSEL, reinterpret_cast<WPARAM>(&start), 0);
    EXPECT_EQ(start, 22u) << "the caret where the form put it";
  });
  driver.SelectRows("frmAttachments", "lvFiles", {0, 2});
  driver.Do("frmAttachments", [&](HWND dialog) {
    EXPECT_TRUE(IsWindowEnabled(ControlWindow(dialog, "frmAttachments", "btnRemove")));
    EXPECT_EQ(form->Count("Click lvFiles"), 1);
  });
  driver.Click("frmAttachments", "btnRemove");
  driver.Do("frmAttachments", [&](HWND dialog) {
    HWND list = ControlWindow(dialog, "frmAttachments", "lvFiles");
    ASSERT_EQ(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0), 1);
    wchar_t text[64] = {};
    LVITEMW item = {};
    item.iSubItem = 1;
    item.pszText = text;
    item.cchTextMax = 64;
    SendMessageW(list, LVM_GETITEMTEXTW, 0, reinterpret_cast<LPARAM>(&item));
    EXPECT_EQ(std::wstring(text), L"C:\\Data\\");
    EXPECT_FALSE(IsWindowEnabled(ControlWindow(dialog, "frmAttachments", "btnRemove")));
  });
  driver.Type("frmAttachments", "txtIgnore", "Thumbs.DB");
  driver.Do("frmAttachments", [&](HWND dialog) {
    EXPECT_EQ(TextOf(ControlWindow(dialog, "frmAttachments", "txtIgnore")), L"thumbs.db");
  });
  driver.Click("frmAttachments", "chkIgnore");
  driver.Click("frmAttachments", "btnOK");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  EXPECT_EQ((*form)["lvFiles"].rows.size(), 1u);
  EXPECT_EQ((*form)["txtIgnore"].text, "thumbs.db");
  EXPECT_EQ(form->Count("Change txtIgnore"), 9) << "one a character typed, none for the view's rewrites";
  EXPECT_FALSE((*form)["chkIgnore"].checked);
}

TEST(FormView, AHandlerShowsAnotherFormOverItsOwnOrHandsOverToIt) {
  auto once = SampleOnce();
  auto attachments = SampleAttachments();
  auto recurrence = SampleRecurrence();
  once->onClick = [&](SampleForm& f, std::string_view control) {
    if (control == "btnAttachments") forms::ShowModal(*attachments);
    if (control == "optRecurrence") {
      f.unloaded = true;  // the hand-over: this one goes, the other shows in its place
      forms::ShowModal(*recurrence);
    }
  };
  DialogDriver driver;
  driver.Click("frmOnce", "btnAttachments");
  driver.Do("frmAttachments", [&](HWND dialog) {
    ASSERT_EQ(DialogsOf("frmOnce").size(), 1u);
    HWND under = DialogsOf("frmOnce").front();
    EXPECT_EQ(GetWindow(dialog, GW_OWNER), under);
    EXPECT_FALSE(IsWindowEnabled(under));
  });
  driver.Click("frmAttachments", "btnOK");
  driver.Click("frmOnce", "optRecurrence");
  driver.Do("frmRecurrence", [&](HWND dialog) {
    ASSERT_EQ(DialogsOf("frmOnce").size(), 1u);
    EXPECT_FALSE(IsWindowVisible(DialogsOf("frmOnce").front())) << "the form that handed over is gone from view";
    EXPECT_NE(GetWindow(dialog, GW_OWNER), DialogsOf("frmOnce").front());
  });
  driver.Click("frmRecurrence", "btnOK");
  forms::ShowModal(*once);
  ASSERT_TRUE(driver.Done());
  EXPECT_EQ(attachments->Actions(), (std::vector<std::string>{"Load", "Click btnOK"}));
  EXPECT_EQ(recurrence->Actions(), (std::vector<std::string>{"Load", "Click btnOK"}));
  EXPECT_EQ(once->Actions(), (std::vector<std::string>{"Load", "Click btnAttachments", "Click optRecurrence"}));
  EXPECT_TRUE(DialogsOf("frmOnce").empty());
}

TEST(FormView, AnErrorInAHandlerEndsTheDialogAndIsRaisedAfterwards) {
  auto form = SampleOnce();
  form->onClick = [](SampleForm&, std::string_view) { Raise(err::kTypeMismatch, "broken handler"); };
  DialogDriver driver;
  driver.Click("frmOnce", "btnHelp");
  try {
    forms::ShowModal(*form);
    ADD_FAILURE() << "no error raised";
  } catch (const RuntimeError& error) {
    EXPECT_EQ(error.Number(), err::kTypeMismatch);
  }
  EXPECT_TRUE(form->unloaded);
  EXPECT_TRUE(DialogsOf("frmOnce").empty());
}

TEST(FormView, TheDialogGoesWhereTheFormPutsItAndStaysOnTopWhenAsked) {
  const ScopedScreen screen;
  auto form = SampleAbout();
  form->onLoad = [](SampleForm& f) {
    f.rect.left = 1500;
    f.rect.top = 3000;
    f.topmost = true;
  };
  DialogDriver driver;
  driver.Do("frmAbout", [&](HWND dialog) {
    RECT frame = {};
    GetWindowRect(dialog, &frame);
    EXPECT_EQ(frame.left, 100);
    EXPECT_EQ(frame.top, 200);
    EXPECT_TRUE(GetWindowLongW(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST);
  });
  driver.Click("frmAbout", "btnOK");
  forms::ShowModal(*form);
  EXPECT_TRUE(driver.Done());
}

// Enter presses the form's default button, Esc its Cancel button (the
// about box's OK), or the close box of a form that has none; F1 asks for help.
struct KeyCase {
  const char* form;
  const char* focus;  // where the user is when pressing the key
  WPARAM key;
  const char* call;
  bool withoutCancelButton = false;
};

class DialogKeys : public ::testing::TestWithParam<KeyCase> {};

TEST_P(DialogKeys, PressTheButtonsTheUserExpects) {
  const KeyCase& c = GetParam();
  auto form = SampleByName(c.form);
  if (c.withoutCancelButton) form->cancelButton.clear();
  DialogDriver driver;
  driver.Focus(c.form, c.focus).Key(c.form, c.key);
  // Help leaves the dialog open.
  if (c.key == VK_F1) driver.CloseBox(c.form);
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  EXPECT_FALSE(driver.TimedOut());
  EXPECT_TRUE(form->unloaded);
  const std::vector<std::string> actions = form->Actions();
  ASSERT_GE(actions.size(), 2u);
  EXPECT_EQ(actions[1], c.call);
}

INSTANTIATE_TEST_SUITE_P(FormView, DialogKeys,
                         ::testing::Values(KeyCase{"frmOnce", "ctlDate", VK_RETURN, "Click btnOk"},
                                           KeyCase{"frmOnce", "optOnce", VK_RETURN, "Click btnOk"},
                                           KeyCase{"frmOnce", "ctlTime", VK_ESCAPE, "Click btnCancel"},
                                           KeyCase{"frmRecurrence", "txtOccurrences", VK_RETURN, "Click btnOK"},
                                           KeyCase{"frmAttachments", "lvFiles", VK_ESCAPE, "Click btnCancel"},
                                           KeyCase{"frmOnce", "ctlTime", VK_ESCAPE, "QueryClose", true},
                                           KeyCase{"frmAbout", "btnHelp", VK_ESCAPE, "Click btnOK"},
                                           KeyCase{"frmAbout", "btnOK", VK_RETURN, "Click btnOK"},
                                           KeyCase{"frmRecurrence", "txtInterval2", VK_F1, "Help"},
                                           KeyCase{"frmAttachments", "txtIgnore", VK_F1, "Help"}));

TEST(FormView, TheFocusGoesWhereTheFormAsksAndTheDialogIsPerMonitorAware) {
  auto form = SampleRecurrence();
  form->onLoad = [](SampleForm& f) { f.focusRequest = "txtOccurrences"; };
  using GetContextFn = HANDLE(WINAPI*)();
  using AwarenessFn = int(WINAPI*)(HANDLE);
  HMODULE user32 = GetModuleHandleW(L"user32.dll");
  const auto getContext =
      reinterpret_cast<GetContextFn>(reinterpret_cast<void*>(GetProcAddress(user32, "GetThreadDpiAwarenessContext")));
  const auto awareness = reinterpret_cast<AwarenessFn>(
      reinterpret_cast<void*>(GetProcAddress(user32, "GetAwarenessFromDpiAwarenessContext")));
  const int before = getContext && awareness ? awareness(getContext()) : -1;
  int during = -1;
  DialogDriver driver;
  driver.Do("frmRecurrence", [&](HWND dialog) {
    EXPECT_EQ(GetFocus(), ControlWindow(dialog, "frmRecurrence", "txtOccurrences"));
    EXPECT_EQ(form->activeControl, "txtOccurrences");
    if (getContext && awareness) during = awareness(getContext());
  });
  driver.Click("frmRecurrence", "btnCancel");
  forms::ShowModal(*form);
  ASSERT_TRUE(driver.Done());
  if (!getContext || !awareness) GTEST_SKIP() << "this system has no thread DPI awareness";
  EXPECT_EQ(during, 2) << "DPI_AWARENESS_PER_MONITOR_AWARE";
  EXPECT_EQ(awareness(getContext()), before) << "the thread's awareness is put back";
}

}  // namespace
}  // namespace qorvane::testing
