#include "frame/translation.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "frame/messages.h"
#include "frame/paths.h"
#include "frame/programinfo.h"
#include "frame/configkeys.h"
#include "frame/inifile.h"
#include "frame/settings.h"
#include "frame/windows1252.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <QSet>

namespace fx {

namespace {
constexpr auto kSeparator = "|||";
constexpr auto kEncodedPrefix = "~~~";

struct LanguageState
{
    QString name;
    QString file;
    QString fontName;
    bool active = false;
};

LanguageState &State()
{
    static LanguageState state;
    return state;
}

bool HasLetter(const QString &text)
{
    for (QChar c : text)
        if ((c >= QLatin1Char('A') && c <= QLatin1Char('Z')) || (c >= QLatin1Char('a') && c <= QLatin1Char('z')))
            return true;
    return false;
}

QString FillArgs(QString text, const QStringList &args)
{
    for (int i = 0; i < args.size(); ++i)
        text.replace(QLatin1Char('%') + QString::number(i) + QLatin1Char('%'), args.at(i));
    return text;
}

QString LanguageFileOf(const QString &name)
{
    return LanguageDir() + name + QStringLiteral(".ini");
}

QString MnemonicFile()
{
    return LanguageDir() + QStringLiteral("Mnemonic.ini");
}

const QString kGeneral = QStringLiteral("General");

// What a lookup may keep: a text's key never changes, and a key once found in or written to
// Mnemonic.ini need not be looked for there again. The language file itself is asked every
// time, so its edits show at once.
struct LookupMemo
{
    QMutex mutex;
    QHash<QString, QString> keys;
    QSet<QString> inMnemonic;
};

LookupMemo &Memo()
{
    static LookupMemo memo;
    return memo;
}

QString KeyOf(const QString &text)
{
    LookupMemo &memo = Memo();
    QMutexLocker lock(&memo.mutex);
    const auto found = memo.keys.constFind(text);
    if (found != memo.keys.cend())
        return *found;
    if (memo.keys.size() > 100000)
        memo.keys.clear();
    return *memo.keys.insert(text, DigestStrToHexStr(text));
}

void EnsureInMnemonic(const QString &key, const QString &text)
{
    LookupMemo &memo = Memo();
    QMutexLocker lock(&memo.mutex);
    if (memo.inMnemonic.contains(key))
        return;
    const QString mnemonic = MnemonicFile();
    if (IniFile::Value(mnemonic, kGeneral, key).value_or(QString()).isEmpty())
        SetIniValue(mnemonic, kGeneral, key, EncodeLanguageValue(text));
    memo.inMnemonic.insert(key);
}
} // namespace

MessageArgs SplitMessageArgs(const QString &text)
{
    const QString separator = QLatin1String(kSeparator);
    const qsizetype at = text.indexOf(separator);
    if (at < 0)
        return {text, {}};
    return {text.left(at), text.mid(at + separator.size()).split(separator)};
}

QString FillMessageArgs(const QString &text)
{
    const MessageArgs split = SplitMessageArgs(text);
    return FillArgs(split.message, split.args);
}

QString TranslateText(const QString &text, bool translate, bool stripAmpersands)
{
    const MessageArgs split = SplitMessageArgs(text);
    QString result;
    try {
        if (translate && IsLanguageActive())
            result = GetTranslation(split.message);
    } catch (const std::exception &) {
        // A failed lookup falls back to the English text.
        result.clear();
    }
    if (result.trimmed().isEmpty())
        result = split.message;
    result = FillArgs(result, split.args);
    if (stripAmpersands)
        result.remove(QLatin1Char('&'));
    return result;
}

QString DigestStrToHexStr(const QString &text)
{
    return QString::fromLatin1(QCryptographicHash::hash(ToWindows1252(text), QCryptographicHash::Md5).toHex());
}

QString EncodeLanguageValue(const QString &text)
{
    // A settings line holds neither a line break nor a character beyond the single-byte code
    // page: such texts are stored as the hexadecimal of their UTF-16 bytes.
    const bool plain = !text.contains(QLatin1Char('\r')) && !text.contains(QLatin1Char('\n')) &&
                       FromWindows1252(ToWindows1252(text)) == text;
    if (plain)
        return text;
    QByteArray bytes(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    if (QSysInfo::ByteOrder == QSysInfo::BigEndian)
        for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
            std::swap(bytes[i], bytes[i + 1]);
    QByteArray hex = bytes.toHex().toUpper();
    while (hex.endsWith("00"))
        hex.chop(2);
    return QLatin1String(kEncodedPrefix) + QString::fromLatin1(hex);
}

QString DecodeLanguageValue(const QString &value)
{
    if (!value.startsWith(QLatin1String(kEncodedPrefix)))
        return value;
    QByteArray bytes = QByteArray::fromHex(value.mid(3).toLatin1());
    if (bytes.size() % 2)
        bytes.append('\0');
    QString text(bytes.size() / 2, Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(static_cast<char16_t>(static_cast<uchar>(bytes[2 * i]) |
                                              (static_cast<uchar>(bytes[2 * i + 1]) << 8)));
    return text;
}

QString GetTranslation(const QString &text)
{
    if (!HasLetter(text))
        return text;
    const QString key = KeyOf(text);
    EnsureInMnemonic(key, text);
    const QString languageFile = CurrentLanguageFile();
    const QString stored = IniFile::Value(languageFile, kGeneral, key).value_or(QString());
    if (stored.isEmpty()) {
        SetIniValue(languageFile, kGeneral, key, EncodeLanguageValue(text));
        return text;
    }
    return DecodeLanguageValue(stored);
}

QString LanguageDir()
{
    return ProgramDir() + QStringLiteral("Language") + QDir::separator();
}

QString CurrentLanguage()
{
    return State().name;
}

QString CurrentLanguageFile()
{
    return State().file;
}

QString CurrentFontName()
{
    return State().fontName;
}

bool IsLanguageActive()
{
    return State().active;
}

void InitLanguage(const QString &name)
{
    Frame("InitLanguage", [&] {
        LogMessage(QString::fromLatin1(msg::SettingLanguage));
        QString language = name.trimmed();
        if (language.isEmpty())
            language = ConfigLanguage();
        QDir().mkpath(LanguageDir());
        if (!QFileInfo::exists(LanguageFileOf(language)))
            language = QStringLiteral("English");
        if (!QFileInfo::exists(LanguageFileOf(language))) {
            LogMessage(QString::fromLatin1(msg::EnglishIniCreated));
            SetIniValue(LanguageFileOf(language), QStringLiteral("Language"), QStringLiteral("Font"),
                        QStringLiteral("Tahoma"));
        }
        if (!QFileInfo::exists(LanguageFileOf(language)))
            Raise(msg::LanguageFileNotFound, {LanguageFileOf(language)});
        LanguageState &state = State();
        state.name = language;
        state.file = LanguageFileOf(language);
        state.fontName = GetIniValue(LanguageFileOf(language), QStringLiteral("Language"), QStringLiteral("Font"),
                                     QStringLiteral("MS Sans Serif"));
        state.active = true;
        LogMessage(msg::LanguageLogged, {language});
    });
}

void SetLanguage(const QString &name)
{
    Frame("SetLanguage", [&] {
        SetConfigLanguage(name);
        InitLanguage(name);
    });
}

} // namespace fx
