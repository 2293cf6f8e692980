#pragma once
// Every text of the application frame that reaches a user or the log, in argument form.
// The English text is the translation key (its MD5), so a text here never changes casually:
// a changed text is a new key, and every language file loses its translation of it.

namespace fx::msg {

// Start-up and command line
inline constexpr char CheckingTemp[] = "Checking TEMP directory ...";
inline constexpr char TempNotDefined[] = "TEMP directory not defined. Please first set operating system environment variable TEMP to correct folder";
inline constexpr char TempNotExisting[] = "TEMP directory: '%0%' not existing. Please first set operating system environment variable TEMP to correct folder";
inline constexpr char CheckingMainConfig[] = "Checking main Fendrix config file: '%0%' ...";
inline constexpr char MainConfigMissing[] = "Main Fendrix config file: 'Fendrix.ini' not in '%0%' directory found";
inline constexpr char CheckingUserConfig[] = "Checking main user config file: '%0%' ...";
inline constexpr char DirectoryWriteDenied[] = "Directory '%0%': write permission denied";
inline constexpr char FileWriteDenied[] = "File '%0%': write permission denied";
inline constexpr char CommandLineArguments[] = "Command line arguments: '%0%'";
inline constexpr char UnknownExecutionMode[] = "Unknown execution mode '%0%'";
inline constexpr char UnknownExecutionModeAtDispatch[] = "Unknown execution mode %0%";
inline constexpr char ExecutionModeLogged[] = "Execution mode: '%0%'";
inline constexpr char BatchModeNotAvailable[] = "Batch mode not available in execution mode: '%0%'";
inline constexpr char UserConfigNotExists[] = "User config file: '%0%' not exists";
inline constexpr char ControlFileLogged[] = "Control file: '%0%'";
inline constexpr char ProjectLogged[] = "PDS-Project: '%0%'";
inline constexpr char UserConfigLogged[] = "User config file: '%0%'";
inline constexpr char ListFileLogged[] = "List file: '%0%'";
inline constexpr char LogFileLocation[] = "Log-file location: '%0%'";
inline constexpr char LogFileNotWritten[] = "Log-file '%0%' could not be written";
inline constexpr char ModuleWindowMissing[] = "The window of execution mode '%0%' is not part of this build yet";

// Usage text
inline constexpr char UsageIncorrectArguments[] = "Incorrect command line arguments: '%0%'";
inline constexpr char UsageHeading[] = "Command line arguments for %0%:";
inline constexpr char UsageModes[] = "Execution modes:";
inline constexpr char UsageCmd[] = "Path to the control file.%0%If control file is not defined, last%1%control file will be used.";
inline constexpr char UsageProject[] = "PDS-Project name.%0%If project name is not defined, last%1%project will be used.";
inline constexpr char UsageConfig[] = "Config file.%0%If not defined, last%1%config file will be used.";
inline constexpr char UsageListFile[] = "Plain ASCII file with model names%0%(separated by line breaks).%1%Applicable only for envelope generation.";
inline constexpr char UsageBatch[] = "If defined Envelope Builder and%0%Interference Checker will be run in batch mode";
inline constexpr char UsageLongForm[] = "The same options in the long form, one argument each (for paths that hold \"/\"):";
inline constexpr char UsageExample[] = "Example:";

// Modules and the window caption
inline constexpr char ApprovalModule[] = "Approval Module";
inline constexpr char CheckModule[] = "Envelope Builder and Interference Checker Module";
inline constexpr char CaptionBase[] = "Norvane Fendrix";
inline constexpr char CaptionBatch[] = " batch mode";
inline constexpr char CaptionOffline[] = " [Offline]";
inline constexpr char CaptionReadOnly[] = " [Read only]";

// End of the process
inline constexpr char Finishing[] = "Finishing ...";
inline constexpr char FinishingStatus[] = "Finishing...";
inline constexpr char Bye[] = "Bye ...";
inline constexpr char FormUnloaded[] = "%0% successfully unloaded";

// Messages and the log
inline constexpr char UnknownError[] = "Unknown error.";

// Settings and registry
inline constexpr char ConfigDirMissing[] = "Directory '%0%' to save configurations file not exists";
inline constexpr char WorkstationServiceNotStarted[] = "The Workstation service is not started.";
inline constexpr char WorkstationConfigFailed[] = "Getting configuration of a workstation failed.";
inline constexpr char LoggedOnUserFailed[] = "Getting information about the currently logged-on user failed.";
inline constexpr char RegistryCannotOpenComputer[] = "Cannot open registry on computer: '%0%'";
inline constexpr char RegistryCannotOpenKey[] = "Cannot open registry (root key: '%0%', key path: '%1%')";
inline constexpr char RegistryCannotQueryType[] = "Cannot query value type (root key: '%0%', key path: '%1%', sub key: '%2%')";
inline constexpr char RegistryCannotQueryValue[] = "Cannot query value (root key: '%0%', key path: '%1%', sub key: '%2%')";

// Files, folders and paths
inline constexpr char FileNotExists[] = "File '%0%' not exists";
inline constexpr char ErrorCode[] = "Error code: %0%";
inline constexpr char FileAlreadyInUse[] = "File '%0%' already in use";
inline constexpr char FileNotDeleted[] = "File '%0%' not deleted";
inline constexpr char FileIsAlreadyInUse[] = "File '%0%' is already in use";
inline constexpr char FileWaitTimeout[] = "Checking if file exists failed (timeout 120000 milliseconds is reached)";
inline constexpr char ServerNameNotDefined[] = "Server name not defined";
inline constexpr char PathNameNotDefined[] = "Path name not defined";
inline constexpr char DirectoryOnServerNotAccessible[] = "Directory '%0%' on server '%1%' not existing or not accessible";
inline constexpr char DirectoryNameNotDefined[] = "Directory name not defined";
inline constexpr char DirectoryExistsAlready[] = "Directory '%0%' exists already";
inline constexpr char CreatingDirectoryFailed[] = "Creating directory '%0%' failed";
inline constexpr char DirectoryNotExists[] = "Directory '%0%' not exists";
inline constexpr char DestinationDirectoryNotExists[] = "Directory with destination file '%0%' not exists";
inline constexpr char StartPathNotExists[] = "Start path '%0%' not exists";
inline constexpr char NameHasSpecialChars[] = "The name cannot contain any of the following characters: %0%";

// Translation
inline constexpr char SettingLanguage[] = "Setting language...";
inline constexpr char EnglishIniCreated[] = "English.ini not found. A new one will be created.";
inline constexpr char LanguageFileNotFound[] = "Language definition file '%0%' not found";
inline constexpr char LanguageLogged[] = "Language: '%0%'";
inline constexpr char LanguageDirMissing[] = "Directory with language config files: '%0%' not exists";

} // namespace fx::msg
