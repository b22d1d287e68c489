#include "platform/ui/module_resources.h"

#include <cstring>
#include <iterator>

namespace fenk::ui {
namespace {

constexpr MenuItem kFileItems[] = {
    {"&Save As...", commandSaveAs},
    {"&Reset", commandReset},
    {nullptr, 0},
    {"E&xit", commandExit},
    {nullptr, 0},
    {"&About Trace...", commandAbout},
};

constexpr MenuResource kTraceMenu{kTraceMenuName, "&File", kFileItems, std::size(kFileItems)};

constexpr ControlResource kFileNameControls[] = {
    {ControlKind::staticText, "&File Name:", -1, 4, 8, 44, 8},
    {ControlKind::edit, "", controlFileName, 44, 6, 80, 12},
    {ControlKind::defaultButton, "Ok", controlOk, 44, 24, 32, 14},
    {ControlKind::button, "Cancel", controlCancel, 92, 24, 32, 14},
};

constexpr ControlResource kAboutControls[] = {
    {ControlKind::centredText, "FENK Encoder/Decoder Runtime", -1, 0, 5, 144, 8},
    {ControlKind::centredText, "Trace Window", -1, 0, 14, 144, 8},
    {ControlKind::defaultButton, "OK", controlOk, 53, 59, 32, 14},
};

constexpr DialogResource kDialogs[] = {
    {kFileNameDialogName, "Trace Info File", "MS Sans Serif", 8, 24, 24, 131, 44,
     kFileNameControls, std::size(kFileNameControls)},
    {kAboutDialogName, "About Trace", "MS Sans Serif", 8, 22, 17, 145, 76, kAboutControls,
     std::size(kAboutControls)},
};

}  // namespace

const MenuResource* findMenu(const char* name) {
    return name && std::strcmp(name, kTraceMenu.name) == 0 ? &kTraceMenu : nullptr;
}

const DialogResource* findDialog(const char* name) {
    if (!name) return nullptr;
    for (const DialogResource& dialog : kDialogs)
        if (std::strcmp(name, dialog.name) == 0) return &dialog;
    return nullptr;
}

}  // namespace fenk::ui
