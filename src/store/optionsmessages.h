#pragma once
// Every text of the options and the design volume offsets that reaches a user or the log, in
// argument form. The English text is the translation key.

namespace fx::msg {

// Reading the dialog's lists
inline constexpr char ReadingInterferenceAreas[] = "Reading interference areas ...";
inline constexpr char InterferenceAreasFound[] = "%0% interference areas found";

// The volume page
inline constexpr char VolumeFrameDvcs[] = "Only show clashes inside volume (DVCS coordinates)";
inline constexpr char VolumeFrameMasterUnits[] = "Only show clashes inside volume (master units)";
inline constexpr char LabelEastingHigh[] = "Easting high (%0% %1%)";
inline constexpr char LabelEastingLow[] = "Easting low (%0% %1%)";
inline constexpr char LabelNorthingHigh[] = "Northing high (%0% %1%)";
inline constexpr char LabelNorthingLow[] = "Northing low (%0% %1%)";
inline constexpr char LabelElevationHigh[] = "Elevation high (%0% %1%)";
inline constexpr char LabelElevationLow[] = "Elevation low (%0% %1%)";

// The advanced filter page
inline constexpr char NoFilterColumnSelected[] = "No filter column selected";

// The risk of opening a locked project
inline constexpr char AllowOpenLockedProjectRisk[] = "Proceeding with this option may be dangerous and can cause data loss!";

// The checks of OK, in their order
inline constexpr char UserConfigFileNotDefined[] = "User config file not defined";
inline constexpr char UserConfigFileNotExists[] = "User config file '%0%' not exists";
inline constexpr char SPRWorkingDirectoryNotExists[] = "SmartPlant Review working directory '%0%' not exists";
inline constexpr char SPRConfigurationFileNotDefined[] = "SmartPlant Review configuration file not defined";
inline constexpr char SPRConfigurationFileNotExists[] = "SmartPlant Review configuration file '%0%' not exists";
inline constexpr char MicroStationFileNotDefined[] = "MicroStation execution file not defined";
inline constexpr char MicroStationFileNotExists[] = "MicroStation execution file '%0%' not exists";
inline constexpr char MicroStationSeedFileNotExists[] = "MicroStation seed file '%0%' not exists";
// The capital H of the high bounds is the program's own text.
inline constexpr char EastingLowNotCorrect[] = "Easting low: '%0%' is not correct";
inline constexpr char NorthingLowNotCorrect[] = "Northing low: '%0%' is not correct";
inline constexpr char ElevationLowNotCorrect[] = "Elevation low: '%0%' is not correct";
inline constexpr char EastingHighNotCorrect[] = "Easting High: '%0%' is not correct";
inline constexpr char NorthingHighNotCorrect[] = "Northing High: '%0%' is not correct";
inline constexpr char ElevationHighNotCorrect[] = "Elevation High: '%0%' is not correct";
inline constexpr char PDSReportFileNotExists[] = "PDS report file '%0%' not exists";

// The design volume offsets
inline constexpr char DvcsEastingCaption[] = "Easting (%0%)";
inline constexpr char DvcsNorthingCaption[] = "Northing (%0%)";
inline constexpr char DvcsElevationCaption[] = "Elevation (%0%)";
inline constexpr char DvcsEastingNotCorrect[] = "Easting: '%0%' is not correct";
inline constexpr char DvcsNorthingNotCorrect[] = "Northing: '%0%' is not correct";
inline constexpr char DvcsElevationNotCorrect[] = "Elevation: '%0%' is not correct";

} // namespace fx::msg
