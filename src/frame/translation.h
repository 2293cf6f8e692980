#pragma once
// Run-time translation of the program's English texts. A translation is keyed by the MD5 of
// the English text itself, and the language files grow by themselves as texts are met.

#include <QString>
#include <QStringList>

namespace fx {

/// A message in argument form taken apart.
struct MessageArgs
{
    QString message;
    QStringList args;
};

/// Splits at the first "|||"; what follows is split at every "|||". A separator at the very
/// end gives one empty argument.
MessageArgs SplitMessageArgs(const QString &text);

/// The message with its arguments put in for "%0%", "%1%", ... and nothing translated.
QString FillMessageArgs(const QString &text);

/// The text for display: translated when `translate` and a language is active, arguments
/// filled in, and with `stripAmpersands` every "&" removed. Never fails.
QString TranslateText(const QString &text, bool translate = true, bool stripAmpersands = false);

/// The current language's translation of an English text; a new text is added to Mnemonic.ini
/// and to the language's file. A text without a letter comes back unchanged.
QString GetTranslation(const QString &text);

/// The key of a text: the MD5 of its single-byte form in hexadecimal.
QString DigestStrToHexStr(const QString &text);

/// A text as a language file stores it ("~~~" and hexadecimal where a line can't hold it).
QString EncodeLanguageValue(const QString &text);
/// The text of a stored value.
QString DecodeLanguageValue(const QString &value);

/// Settles the language: `name`, else the one of Config.ini, else English.
void InitLanguage(const QString &name = QString());

/// Selects a language, stores it in Config.ini and settles it.
void SetLanguage(const QString &name);

/// The language folder: the program's folder + "Language" with a trailing separator.
QString LanguageDir();

/// The current language's name, its file, and its font.
QString CurrentLanguage();
QString CurrentLanguageFile();
QString CurrentFontName();

/// True once a language is settled: texts are then looked up and the files grow.
bool IsLanguageActive();

} // namespace fx
