/* The numbers of the dialog templates and of their controls, shared by the
   resource script (form_resources.rc) and the tables that name the controls
   (platform/form_templates_win.cpp). Plain defines: windres reads this too.
   Each form's confirm and cancel buttons are IDOK (1) and IDCANCEL (2), so
   that Enter and Esc press them. */
#pragma once

#define IDD_FRM_ONCE 101
#define IDD_FRM_RECURRENCE 102
#define IDD_FRM_ATTACHMENTS 103
#define IDD_FRM_ABOUT 104

/* frmOnce */
#define IDC_ONCE_FRAME3 1101
#define IDC_ONCE_LABEL4 1102
#define IDC_ONCE_DATE 1103
#define IDC_ONCE_LABEL3 1104
#define IDC_ONCE_TIME 1105
#define IDC_ONCE_FRAME2 1106
#define IDC_ONCE_OPT_ONCE 1107
#define IDC_ONCE_OPT_RECURRENCE 1108
#define IDC_ONCE_ATTACHMENTS 1109
#define IDC_ONCE_HELP 1110

/* frmRecurrence: time, pattern options, range, buttons */
#define IDC_REC_FRAME3 1201
#define IDC_REC_LABEL10 1202
#define IDC_REC_START_TIME 1203
#define IDC_REC_FRAME1 1204
#define IDC_REC_OPT_DAILY 1205
#define IDC_REC_OPT_WEEKLY 1206
#define IDC_REC_OPT_MONTHLY 1207
#define IDC_REC_OPT_YEARLY 1208
#define IDC_REC_FRAME2 1209
#define IDC_REC_LABEL8 1210
#define IDC_REC_START_DATE 1211
#define IDC_REC_OPT_NO_END 1212
#define IDC_REC_OPT_END_AFTER 1213
#define IDC_REC_OCCURRENCES 1214
#define IDC_REC_LABEL9 1215
#define IDC_REC_OPT_END_BY 1216
#define IDC_REC_END_DATE 1217
#define IDC_REC_REMOVE 1218
#define IDC_REC_ATTACHMENTS 1219
/* the daily page */
#define IDC_REC_OPT_INTERVAL1 1231
#define IDC_REC_OPT_WEEKDAY1 1232
#define IDC_REC_INTERVAL1 1233
#define IDC_REC_LABEL3 1234
/* the weekly page; the seven week days follow each other from Sunday */
#define IDC_REC_LABEL1 1241
#define IDC_REC_INTERVAL2 1242
#define IDC_REC_LABEL2 1243
#define IDC_REC_WEEKDAY0 1244
#define IDC_REC_WEEKDAY1 1245
#define IDC_REC_WEEKDAY2 1246
#define IDC_REC_WEEKDAY3 1247
#define IDC_REC_WEEKDAY4 1248
#define IDC_REC_WEEKDAY5 1249
#define IDC_REC_WEEKDAY6 1250
/* the monthly page */
#define IDC_REC_OPT_DAY_OF_MONTH3 1261
#define IDC_REC_OPT_MONTH_NTH3 1262
#define IDC_REC_DAY_OF_MONTH3 1263
#define IDC_REC_LABEL4 1264
#define IDC_REC_INTERVAL3 1265
#define IDC_REC_LABEL5 1266
#define IDC_REC_INSTANCE3 1267
#define IDC_REC_WEEKDAY_MASK3 1268
#define IDC_REC_LABEL7 1269
#define IDC_REC_INTERVAL33 1270
#define IDC_REC_LABEL6 1271
/* the yearly page */
#define IDC_REC_OPT_YEARLY4 1281
#define IDC_REC_OPT_YEAR_NTH4 1282
#define IDC_REC_MONTH_OF_YEAR4 1283
#define IDC_REC_DAY_OF_MONTH4 1284
#define IDC_REC_INSTANCE4 1285
#define IDC_REC_WEEKDAY_MASK4 1286
#define IDC_REC_LABEL11 1287
#define IDC_REC_MONTH_OF_YEAR44 1288

/* frmAttachments */
#define IDC_ATT_LABEL2 1301
#define IDC_ATT_FILES 1302
#define IDC_ATT_ADD_FILE 1303
#define IDC_ATT_ADD_FOLDER 1304
#define IDC_ATT_REMOVE 1305
#define IDC_ATT_FRAME1 1306
#define IDC_ATT_LABEL1 1307
#define IDC_ATT_IGNORE 1308
#define IDC_ATT_ADD_IGNORE 1309
#define IDC_ATT_IGNORE_HIDDEN 1310

/* frmAbout */
#define IDC_ABOUT_PRODUCT 1401
#define IDC_ABOUT_VERSION 1402
#define IDC_ABOUT_WEB_PAGE 1403
#define IDC_ABOUT_SUPPORT 1404
#define IDC_ABOUT_HELP 1405
#define IDC_ABOUT_BUG_REPORT 1406
