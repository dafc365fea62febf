/* Ids of all resources, controls and commands. Plain macros, because the resource compiler reads
   this file as well as the C++ compiler. */
#ifndef LUNARA_RESOURCES_IDS_H
#define LUNARA_RESOURCES_IDS_H

#define IDS_APP_TITLE 1
#define IDS_TOOLS 104

#define IDS_NO_BACKUP_FOLDER 57355
#define IDS_BACKUP_DONE 57353
#define IDS_BACKUP_FAILED 57354
#define IDS_ASK_RESTORE 57357
#define IDS_NO_BACKUPS 57358

#define IDI_LUNARA 101

#define IDR_MENU 102
#define IDR_MENU_BAR 102
#define IDR_ACCELERATORS 3

#define IDB_BLEEDING_LEGEND 105
#define IDB_MARK_FORECAST 106
#define IDB_MARK_RECORDED 107
#define IDB_MARK_DISCARDED 112
#define IDB_MARK_NOTE 116
#define IDB_MENU_BAR 120

/* Dialogs and their controls */
#define IDD_ABOUT 103

#define IDD_LOGIN 108
#define IDC_USER_NAME 1002
#define IDC_PASSWORD 1003

#define IDD_CHANGE_PASSWORD 109
#define IDC_NEW_PASSWORD 1003
#define IDC_CONFIRM_PASSWORD 1004
#define IDC_OLD_PASSWORD 1006

#define IDD_NOTES 113
#define IDC_CRAMPS 1014
#define IDC_PMS 1015
#define IDC_NOTE_TEXT 1016
#define IDC_NOTE_DATE 1018

#define IDD_HISTORY 117
#define IDC_PERIOD_LENGTH 1016
#define IDC_BLEEDING 1017
#define IDC_START_DATE 1019
#define IDC_END_DATE 1020
#define IDC_PERIOD_LENGTH_SPIN 1021
#define IDC_BLEEDING_SPIN 1022

#define IDD_BACKUP 121
#define IDC_BACKUP_NAME 1016
#define IDC_SAVE_FIRST 1024

#define IDD_RESTORE 122
#define IDC_BACKUP_LIST 1023
#define IDC_DELETE_BACKUP 1025
#define IDC_START_AFTER 1026

/* Commands */
#define IDM_TOOLS 104 /* the menu bar's drop-down button, which sends no command */
#define IDM_ABOUT 40003
#define IDM_VIEW_DIARY 40005
#define IDM_VIEW_GRAPH 40006
#define IDM_SHOW_BLEEDING 40007
#define IDM_SHOW_PERIOD 40008
#define IDM_SHOW_OVULATION 40009
#define IDM_SHOW_PREGNANCY 40010
#define IDM_SHOW_TEMPERATURE 40011
#define IDM_CHANGE_PASSWORD 50030
#define IDM_SHOW_NOTES 50032
#define IDM_HELP 50033
#define IDM_EXIT 50034
#define IDM_HISTORY 50035
#define IDM_BACKUP 50042
#define IDM_RESTORE 50043

/* Values in the description of a menu bar (platform/pocketpc/menu_bar.h) */
#define MENU_BAR_NO_IMAGE 0xFFFF
#define MENU_BAR_DROP_DOWN 1
#define MENU_BAR_CHECK 2

#endif
