// Resource numbers. The string numbers pair with the commands in the host's function table.
#pragma once

#define IDS_MAIN_MENU 10
#define IDS_LOAD 11
#define IDS_SAVE 12
#define IDS_ABOUT 13
#define IDS_TOOLS 14
#define IDS_RENAME_NC 15
#define IDS_IMPORT_NC 16
#define IDS_IMPORT_NC_QUEUE 17
#define IDS_IMPORT_TOOLS 18 // no entry point answers to it

// Shown by no flow of this release.
#define IDD_TOOL_CHANGE 101
#define IDD_EXIT 102
