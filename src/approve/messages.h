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
inline constexpr char SettingsFileFilter[] = "Fendrix config file (*.ini)|*.ini";
inline constexpr char ApprovalWindowNeedsDisplay[] =
    "The Approval Module needs a window system: DISPLAY or WAYLAND_DISPLAY is not set";
inline constexpr char ManualFile[] = "Help/Fendrix [en].pdf";

// The options dialog and the design volume offsets
inline constexpr char OptionsCaption[] = "Options";
inline constexpr char OptionsPageViewer[] = "Viewer";
inline constexpr char OptionsPageClashes[] = "Clashes";
inline constexpr char OptionsPageDescriptions[] = "Descriptions";
inline constexpr char OptionsPageVolume[] = "Volume filter";
inline constexpr char OptionsPageAdvancedFilter[] = "Advanced filter";
inline constexpr char OptionsPageConfig[] = "Settings files";
inline constexpr char OptionsViewer[] = "Show clashes in";
inline constexpr char OptionsSPR[] = "SmartPlant Review";
inline constexpr char OptionsMicroStation[] = "MicroStation";
inline constexpr char OptionsBuiltInViewer[] = "Built-in viewer";
inline constexpr char OptionsMSTNPath[] = "MicroStation execution file:";
inline constexpr char OptionsDGNSeedFile[] = "Seed file:";
inline constexpr char OptionsAutoGenerateSPRSession[] = "Generate the session automatically in:";
inline constexpr char OptionsUseExistingSPRSession[] = "Use the existing session file:";
inline constexpr char OptionsShowClashDialog[] = "Ask for the viewer before showing a clash";
inline constexpr char OptionsColors[] = "Colours";
inline constexpr char OptionsCompA[] = "Component A";
inline constexpr char OptionsCompB[] = "Component B";
inline constexpr char OptionsPickColor[] = "...";
inline constexpr char OptionsSeparator[] = "Separator of the parts of component names:";
inline constexpr char OptionsPDSReportFile[] = "Show only the clashes of the PDS report file:";
inline constexpr char OptionsAllowOpenLockedProject[] = "Open a project locked by another user";
inline constexpr char OptionsApprovedDescr[] = "Description when approving:";
inline constexpr char OptionsUnapprovedDescr[] = "Description when unapproving:";
inline constexpr char OptionsDescr[] = "Description when describing only:";
inline constexpr char OptionsNeverChangeDescr[] = "Never change descriptions";
inline constexpr char OptionsNeverOverwriteDescr[] = "Never overwrite existing descriptions";
inline constexpr char OptionsShowDescrDialog[] = "Ask for the description at each change";
inline constexpr char OptionsAutoFilter[] = "After loading";
inline constexpr char OptionsSetFilterAutomaticaly[] = "Show unapproved clashes only";
inline constexpr char OptionsShowFilterDialog[] = "Ask before setting this filter";
inline constexpr char OptionsArea[] = "Interference area:";
inline constexpr char OptionsClearSettings[] = "Clear";
inline constexpr char OptionsDVCS[] = "DVCS...";
inline constexpr char OptionsFilterCols[] = "Filter columns:";
inline constexpr char OptionsFilterValues[] = "Clashes with these values are hidden:";
inline constexpr char OptionsValue[] = "Tick the values like:";
inline constexpr char OptionsSelectAll[] = "Select all";
inline constexpr char OptionsClearAdvancedFilter[] = "Clear filter";
inline constexpr char OptionsConfigFile[] = "User config file:";
inline constexpr char OptionsAutoReload[] = "Load the last project automatically at start";
inline constexpr char OptionsSelect[] = "Select...";
inline constexpr char OptionsOpen[] = "Open";
inline constexpr char OptionsExecutableFilter[] = "Program (*)|*";
inline constexpr char OptionsSeedFilter[] = "Design file (*.dgn)|*.dgn";
inline constexpr char OptionsSessionFilter[] = "Design Review session (*.dri)|*.dri";
inline constexpr char OptionsReportFilter[] = "PDS report file (*)|*";
inline constexpr char DvcsCaption[] = "Design volume coordinate system";

// The small windows: splash, project selection, description, save, filter prompt, tips, about
inline constexpr char VersionText[] = "Version %0%";
inline constexpr char SplashStarting[] = "Starting ...";
inline constexpr char ButtonOK[] = "OK";
inline constexpr char ButtonCancel[] = "Cancel";
inline constexpr char SelectProjectControlFile[] = "Control file:";
inline constexpr char SelectProjectProjects[] = "PDS-Projects:";
inline constexpr char SelectProjectBrowse[] = "...";
inline constexpr char SelectProjectAutoReload[] = "Load the selected project automatically at start";
inline constexpr char SelectProjectLoad4File[] = "Load from file...";
inline constexpr char DescrLabel[] = "Description:";
inline constexpr char DescrDoNotOverwrite[] = "Do not overwrite existing descriptions";
inline constexpr char DescrDoNotChange[] = "Do not change descriptions";
inline constexpr char DescrNeverShow[] = "Do not show this dialog again";
inline constexpr char SaveOptionToProject[] = "Save changes to PDS-Project";
inline constexpr char SaveOptionToFile[] = "Save changes to clash file";
inline constexpr char SaveOptionDiscard[] = "Discard changes";
inline constexpr char FilterMessageCaption[] = "Automatic filter";
inline constexpr char FilterMessageText[] = "The clashes are loaded. The grid can show the unapproved clashes only.";
inline constexpr char FilterMessageSetFilter[] = "Show unapproved clashes only";
inline constexpr char FilterMessageNeverShow[] = "Do not show this message again";
inline constexpr char DayTipCaption[] = "Tip of the Day";
inline constexpr char DayTipDidYouKnow[] = "Did you know...";
inline constexpr char DayTipShowAtStartup[] = "Show tips at startup";
inline constexpr char DayTipNext[] = "&Next Tip";
inline constexpr char AboutCaption[] = "About";
inline constexpr char AboutSysInfo[] = "&System Info...";
inline constexpr char AboutCopyright[] = "Copyright (C) Norvane. All rights reserved.";
inline constexpr char AboutNoticeIntergraph[] = "Intergraph, PDS and SmartPlant are trademarks of Intergraph Corporation.";
inline constexpr char AboutNoticeBentley[] = "Bentley and MicroStation are trademarks of Bentley Systems, Incorporated.";
inline constexpr char AboutNoticeMicrosoft[] = "Microsoft and Windows are trademarks of Microsoft Corporation.";
inline constexpr char SysInfoUnavailable[] = "System Information Is Unavailable At This Time";

} // namespace fx::msg
