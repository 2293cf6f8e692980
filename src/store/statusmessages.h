#pragma once
// Every text of the clash status changes, the description dialog and the report file reader
// that reaches a user or the log, in argument form. The English text is the translation key.

namespace fx::msg {

// Status changes of clashes
inline constexpr char UpdatingClashesDescription[] = "Updating clashes: description: '%0%' (%1%) ...";
inline constexpr char UpdatingClashesDescriptionAll[] = "Updating clashes: description: '%0%' ...";
inline constexpr char UpdatingClashesStatus[] = "Updating clashes: %0%; description: '%1%' (%2%) ...";
inline constexpr char UpdatingClashesStatusAll[] = "Updating clashes: %0%; description: '%1%' ...";
inline constexpr char StatusApproveReal[] = "approve real";
inline constexpr char StatusApproveFalse[] = "approve false";
inline constexpr char StatusUnapprove[] = "unapprove";
inline constexpr char ValueTooLong[] = "%0%: '%1%' is too long. (Max %2% character)";
inline constexpr char ClashesUpdated[] = "%0% clashes updated";
inline constexpr char NoClashesUpdated[] = "No clashes updated";

// The description dialog
inline constexpr char DescrCaptionApproveReal[] = "Approve Real Clash: ";
inline constexpr char DescrCaptionApproveFalse[] = "Approve False Clash: ";
inline constexpr char DescrCaptionUnapprove[] = "Unapprove Clash: ";
inline constexpr char DescrCaption[] = "%0%Please enter your description here";
inline constexpr char AddUserIDLabel[] = "Add User ID to description";
inline constexpr char AddUserIDLabelWithText[] = "Add User ID to description (%0%: %1%)";

// Clash numbers from a report file
inline constexpr char ReadingPDSReportFile[] = "Reading PDS report file '%0%' ...";
inline constexpr char ClashIDsImported[] = "%0% clash IDs imported";

} // namespace fx::msg
