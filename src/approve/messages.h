#pragma once
// Every text of the approval window's core that reaches a user or the log, in argument form.
// Captions and tool tips are translation keys too: their English text never changes casually.

namespace fx::msg {

// Main menu captions; "&" marks the access key.
inline constexpr char MenuFile[] = "&File";
inline constexpr char MenuFileLoadClashes4PDS[] = "Load clashes from &PDS...";
inline constexpr char MenuFileLoadClashes4File[] = "Load clashes from &file...";
inline constexpr char MenuFileLoadSettings[] = "Load settings from file...";
inline constexpr char MenuFileSaveSettings[] = "Save settings to file...";
inline constexpr char MenuFileSave[] = "&Save changes...";
inline constexpr char MenuFileCheck[] = "Switch to Envelope Builder and Interference Checker Module...";
inline constexpr char MenuFileExit[] = "E&xit";
inline constexpr char MenuClash[] = "&Clash";
inline constexpr char MenuClashApproveReal[] = "&Approve Real selected clashes...";
inline constexpr char MenuClashApproveFalse[] = "&Approve False selected clashes...";
inline constexpr char MenuClashUnapprove[] = "&Unapprove selected clashes...";
inline constexpr char MenuClashSetDescription[] = "Set description for selected clashes...";
inline constexpr char MenuClashShow[] = "&Show selected clash...";
inline constexpr char MenuView[] = "&View";
inline constexpr char MenuViewEventWindow[] = "&Event window";
inline constexpr char MenuTools[] = "&Tools";
inline constexpr char MenuToolsReport[] = "&Report...";
inline constexpr char MenuToolsApprovalFilter[] = "&Approval filter...";
inline constexpr char MenuToolsPrivilegeManager[] = "&Privilege manager...";
inline constexpr char MenuToolsOptions[] = "&Options...";
inline constexpr char MenuLang[] = "&Language";
inline constexpr char MenuLangEditor[] = "Language editor";
inline constexpr char MenuHelp[] = "&Help";
inline constexpr char MenuHelpManual[] = "Manual...";
inline constexpr char MenuHelpAbout[] = "&About...";

// Tool tips of the main toolbar
inline constexpr char TipApproveReal[] = "Approve Real selected clashes";
inline constexpr char TipApproveFalse[] = "Approve False selected clashes";
inline constexpr char TipUnapprove[] = "Unapprove selected clashes";
inline constexpr char TipSetDescription[] = "Set description for selected clashes";
inline constexpr char TipApprovalFilter[] = "Show approval filter";
inline constexpr char TipShowClash[] = "Show selected clash";
inline constexpr char TipCreateReport[] = "Create report...";
inline constexpr char TipSaveChanges[] = "Save changes...";

// Recent projects
inline constexpr char FalseConfigInIniFile[] = "False config in ini file.";

// ---- The approval window ----
inline constexpr char MenuItemNotFound[] = "Menu item '%0%' not found";
inline constexpr char MenuItemWithoutParent[] = "Menu item '%0%' has no parent '%1%'";
inline constexpr char MenuPropertyUnknown[] = "Menu property '%0%' not known";
inline constexpr char StartingProgram[] = "Starting %0% ...";
inline constexpr char PleaseSelectProject[] = "Please select project";
inline constexpr char LoadingProjectText[] = "Loading project '%0%'...";
inline constexpr char LoadingProjectFromFile[] = "Loading project from file '%0%'...";
inline constexpr char ProjectLoadedSuccessfully[] = "Project loaded successfully (elapsed time %0%)";
inline constexpr char LoadingSettingsFrom[] = "Loading settings from '%0%' ...";
inline constexpr char NoClashesSelected[] = "No clashes selected";
inline constexpr char ReallyCloseWindow[] = "Do you really want to close this window?";
inline constexpr char DirectoryWriteDeniedWarning[] = "Directory '%0%': write permission denied.%1%";
inline constexpr char FileWriteDeniedWarning[] = "File '%0%': write permission denied.%1%";
inline constexpr char ProgramSettingsCannotBeSaved[] = "Program settings cannot be saved!";
inline constexpr char ClashFileDialogFilter[] = "Fendrix access database (*.fxdb)";
inline constexpr char SettingsFileDialogFilter[] = "Fendrix config file (*.ini)";
inline constexpr char ApprovalWindowNeedsDisplay[] =
    "The Approval Module needs a window system: DISPLAY or WAYLAND_DISPLAY is not set";
inline constexpr char ManualFile[] = "Help/Fendrix [en].pdf";

} // namespace fx::msg
