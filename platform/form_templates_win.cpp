// The tables of the four dialog templates: the form's control names, in the
// form's terms, against the window ids of the resource script.
#include <windows.h>

#include <array>

#include "platform/form_templates.h"
#include "platform/form_resources/ids.h"

namespace qorvane::forms {
namespace {

constexpr TemplateControl kOnce[] = {
    {"Frame3", IDC_ONCE_FRAME3},
    {"Label4", IDC_ONCE_LABEL4},
    {"ctlDate", IDC_ONCE_DATE},
    {"Label3", IDC_ONCE_LABEL3},
    {"ctlTime", IDC_ONCE_TIME},
    {"Frame2", IDC_ONCE_FRAME2},
    {"optOnce", IDC_ONCE_OPT_ONCE},
    {"optRecurrence", IDC_ONCE_OPT_RECURRENCE},
    {"btnAttachments", IDC_ONCE_ATTACHMENTS},
    {"btnOk", IDOK},
    {"btnCancel", IDCANCEL},
    {"btnHelp", IDC_ONCE_HELP},
};

constexpr TemplateControl kRecurrence[] = {
    {"Frame3", IDC_REC_FRAME3},
    {"Label10", IDC_REC_LABEL10},
    {"ctlStartTime", IDC_REC_START_TIME},
    {"Frame1", IDC_REC_FRAME1},
    {"optDaily", IDC_REC_OPT_DAILY},
    {"optWeekly", IDC_REC_OPT_WEEKLY},
    {"optMonthly", IDC_REC_OPT_MONTHLY},
    {"optYearly", IDC_REC_OPT_YEARLY},
    {"ctlDailyPage", 0},
    {"optInterval1", IDC_REC_OPT_INTERVAL1},
    {"optEveryWeekday1", IDC_REC_OPT_WEEKDAY1},
    {"txtInterval1", IDC_REC_INTERVAL1},
    {"Label3", IDC_REC_LABEL3},
    {"ctlWeeklyPage", 0},
    {"Label1", IDC_REC_LABEL1},
    {"txtInterval2", IDC_REC_INTERVAL2},
    {"Label2", IDC_REC_LABEL2},
    {"arWeekDays(0)", IDC_REC_WEEKDAY0},
    {"arWeekDays(1)", IDC_REC_WEEKDAY1},
    {"arWeekDays(2)", IDC_REC_WEEKDAY2},
    {"arWeekDays(3)", IDC_REC_WEEKDAY3},
    {"arWeekDays(4)", IDC_REC_WEEKDAY4},
    {"arWeekDays(5)", IDC_REC_WEEKDAY5},
    {"arWeekDays(6)", IDC_REC_WEEKDAY6},
    {"ctlMonthlyPage", 0},
    {"optDayOfMonth3", IDC_REC_OPT_DAY_OF_MONTH3},
    {"optTheMonthNth3", IDC_REC_OPT_MONTH_NTH3},
    {"txtDayOfMonth3", IDC_REC_DAY_OF_MONTH3},
    {"Label4", IDC_REC_LABEL4},
    {"txtInterval3", IDC_REC_INTERVAL3},
    {"Label5", IDC_REC_LABEL5},
    {"cboInstance3", IDC_REC_INSTANCE3},
    {"cboDayOfWeekMask3", IDC_REC_WEEKDAY_MASK3},
    {"Label7", IDC_REC_LABEL7},
    {"txtInterval33", IDC_REC_INTERVAL33},
    {"Label6", IDC_REC_LABEL6},
    {"ctlYearlyPage", 0},
    {"optYearly4", IDC_REC_OPT_YEARLY4},
    {"optYearNth4", IDC_REC_OPT_YEAR_NTH4},
    {"cboMonthOfYear4", IDC_REC_MONTH_OF_YEAR4},
    {"txtDayOfMonth4", IDC_REC_DAY_OF_MONTH4},
    {"cboInstance4", IDC_REC_INSTANCE4},
    {"cboDayOfWeekMask4", IDC_REC_WEEKDAY_MASK4},
    {"Label11", IDC_REC_LABEL11},
    {"cboMonthOfYear44", IDC_REC_MONTH_OF_YEAR44},
    {"Frame2", IDC_REC_FRAME2},
    {"Label8", IDC_REC_LABEL8},
    {"ctlStartDate", IDC_REC_START_DATE},
    {"optNoEndDate", IDC_REC_OPT_NO_END},
    {"optEndAfter", IDC_REC_OPT_END_AFTER},
    {"txtOccurrences", IDC_REC_OCCURRENCES},
    {"Label9", IDC_REC_LABEL9},
    {"optEndBy", IDC_REC_OPT_END_BY},
    {"ctlEndDate", IDC_REC_END_DATE},
    {"btnOK", IDOK},
    {"btnCancel", IDCANCEL},
    {"btnRemoveRec", IDC_REC_REMOVE},
    {"btnAttachments", IDC_REC_ATTACHMENTS},
};

constexpr TemplateControl kAttachments[] = {
    {"Label2", IDC_ATT_LABEL2},
    {"lvFiles", IDC_ATT_FILES},
    {"btnAddFile", IDC_ATT_ADD_FILE},
    {"btnAddFolder", IDC_ATT_ADD_FOLDER},
    {"btnRemove", IDC_ATT_REMOVE},
    {"Frame1", IDC_ATT_FRAME1},
    {"Label1", IDC_ATT_LABEL1},
    {"txtIgnore", IDC_ATT_IGNORE},
    {"bntAddIgnore", IDC_ATT_ADD_IGNORE},
    {"chkIgnore", IDC_ATT_IGNORE_HIDDEN},
    {"btnOK", IDOK},
    {"btnCancel", IDCANCEL},
};

constexpr TemplateControl kAbout[] = {
    {"lblProduct", IDC_ABOUT_PRODUCT},
    {"lblVersion", IDC_ABOUT_VERSION},
    {"lblWebPage", IDC_ABOUT_WEB_PAGE},
    {"lblSupport", IDC_ABOUT_SUPPORT},
    {"btnOK", IDOK},
    {"btnHelp", IDC_ABOUT_HELP},
    {"btnBugReport", IDC_ABOUT_BUG_REPORT},
};

constexpr std::array kTemplates = {
    FormTemplate{"frmOnce", IDD_FRM_ONCE, kOnce},
    FormTemplate{"frmRecurrence", IDD_FRM_RECURRENCE, kRecurrence},
    FormTemplate{"frmAttachments", IDD_FRM_ATTACHMENTS, kAttachments},
    FormTemplate{"frmAbout", IDD_FRM_ABOUT, kAbout},
};

}  // namespace

std::span<const FormTemplate> FormTemplates() { return kTemplates; }

const FormTemplate* FindFormTemplate(std::string_view formName) {
  for (const FormTemplate& layout : kTemplates) {
    if (layout.form == formName) return &layout;
  }
  return nullptr;
}

int TemplateControlId(const FormTemplate& layout, std::string_view controlName) {
  for (const TemplateControl& control : layout.controls) {
    if (control.name == controlName) return control.id;
  }
  return 0;
}

std::string_view TemplateControlName(const FormTemplate& layout, int id) {
  if (id == 0) return {};
  for (const TemplateControl& control : layout.controls) {
    if (control.id == id) return control.name;
  }
  return {};
}

}  // namespace qorvane::forms
