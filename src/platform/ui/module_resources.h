// The resources of the library module: the trace window's menu and dialogs,
// looked up by name as the window system loads them.
#ifndef FENK_PLATFORM_UI_MODULE_RESOURCES_H
#define FENK_PLATFORM_UI_MODULE_RESOURCES_H

#include "platform/ui/ui.h"

namespace fenk::ui {

// Command ids of the trace menu and control ids of the dialogs.
enum : int32_t {
    commandSaveAs = 101,
    commandReset = 102,
    commandAbout = 103,
    commandExit = 105,
    controlOk = 1,
    controlCancel = 2,
    controlFileName = 16
};

inline constexpr const char kTraceClassName[] = "TraceWClass";
inline constexpr const char kTraceIconName[] = "test";
inline constexpr const char kTraceMenuName[] = "TraceMenu";
inline constexpr const char kFileNameDialogName[] = "EnterTraceDlg";
inline constexpr const char kAboutDialogName[] = "AboutTraceBox";

// Null when the module has no resource of that name.
const MenuResource* findMenu(const char* name);
const DialogResource* findDialog(const char* name);

}  // namespace fenk::ui

#endif
