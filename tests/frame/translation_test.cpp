#include "frame/caption.h"
#include "frame/failure.h"
#include "frame/settings.h"
#include "frame/translation.h"
#include "support/sandbox.h"

#include <QFileInfo>

#include <gtest/gtest.h>

using namespace fx;

TEST(SplitMessageArgs, separates_message_and_arguments)
{
    const MessageArgs none = SplitMessageArgs(QStringLiteral("plain"));
    EXPECT_EQ(none.message, QStringLiteral("plain"));
    EXPECT_TRUE(none.args.isEmpty());

    const MessageArgs two = SplitMessageArgs(QStringLiteral("%0% and %1%|||a|||b"));
    EXPECT_EQ(two.message, QStringLiteral("%0% and %1%"));
    EXPECT_EQ(two.args, (QStringList{QStringLiteral("a"), QStringLiteral("b")}));

    const MessageArgs trailing = SplitMessageArgs(QStringLiteral("x %0% y|||"));
    EXPECT_EQ(trailing.args, QStringList{QString()});
}

TEST(TranslateText, fills_arguments_and_keeps_placeholders_without_one)
{
    EXPECT_EQ(TranslateText(QStringLiteral("'%0%' in '%1%'|||a")), QStringLiteral("'a' in '%1%'"));
    EXPECT_EQ(TranslateText(QStringLiteral("value: %0%.|||")), QStringLiteral("value: ."));
    EXPECT_EQ(TranslateText(QStringLiteral("&Save %0%|||A&B"), false, true), QStringLiteral("Save AB"));
}

TEST(LanguageValue, encodes_what_a_settings_line_cannot_hold_and_decodes_it_back)
{
    for (const QString &text : {QStringLiteral("Datei '%0%' nicht gefunden"), QStringLiteral("Größe"),
                                QString::fromUtf8("Файл не найден"), QString::fromUtf8("Coût 5 €"),
                                QStringLiteral("two\r\nlines"), QString::fromUtf8("ends in Ā")}) {
        const QString stored = EncodeLanguageValue(text);
        EXPECT_FALSE(stored.contains(QLatin1Char('\n')));
        EXPECT_EQ(DecodeLanguageValue(stored), text) << qPrintable(stored);
    }
    EXPECT_EQ(EncodeLanguageValue(QStringLiteral("Größe")), QStringLiteral("Größe"));
    // "€" has its place in the single-byte code page; "Ω" has none.
    EXPECT_EQ(EncodeLanguageValue(QString::fromUtf8("Cost €")), QString::fromUtf8("Cost €"));
    // Trailing zero bytes are left out of the stored form.
    EXPECT_EQ(EncodeLanguageValue(QString::fromUtf8("Ωa")), QStringLiteral("~~~A90361"));
    EXPECT_EQ(DecodeLanguageValue(QStringLiteral("~~~a90361")), QString::fromUtf8("Ωa"));
}

TEST(DigestStrToHexStr, is_the_md5_of_the_single_byte_text)
{
    EXPECT_EQ(DigestStrToHexStr(QString()).toLower(), QStringLiteral("d41d8cd98f00b204e9800998ecf8427e"));
    EXPECT_EQ(DigestStrToHexStr(QStringLiteral("abc")).toLower(), QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
    // "ü" is one byte (0xFC) in the single-byte form, not two as in UTF-8; so is "€" (0x80).
    EXPECT_EQ(DigestStrToHexStr(QStringLiteral("\u00FC")).toLower(), QStringLiteral("cf0eece3a23b680f6266a21aabba4d32"));
    EXPECT_EQ(DigestStrToHexStr(QString::fromUtf8("€")).toLower(), QStringLiteral("8d39dd7eef115ea6975446ef4082951f"));
}

class LanguageFiles : public ::testing::Test
{
protected:
    QString Mnemonic() const { return LanguageDir() + QStringLiteral("Mnemonic.ini"); }
    QString LanguageFile(const char *name) const { return LanguageDir() + QString::fromLatin1(name) + QStringLiteral(".ini"); }
    int GeneralCount(const QString &file) const
    {
        QStringList names, values;
        GetIniSection2Array(file, QStringLiteral("General"), names, values, true);
        return static_cast<int>(names.size());
    }
    fxtest::Sandbox sandbox;
};

TEST_F(LanguageFiles, nothing_is_looked_up_before_a_language_is_settled_then_a_missing_english_file_is_made_and_a_missing_language_falls_back_to_it)
{
    EXPECT_EQ(TranslateText(QStringLiteral("Hello %0%|||you")), QStringLiteral("Hello you"));
    EXPECT_FALSE(QFileInfo::exists(Mnemonic()));

    InitLanguage();
    EXPECT_EQ(CurrentLanguage(), QStringLiteral("English"));
    EXPECT_TRUE(QFileInfo::exists(LanguageFile("English")));
    EXPECT_EQ(GetIniValue(LanguageFile("English"), QStringLiteral("Language"), QStringLiteral("Font")), QStringLiteral("Tahoma"));
    EXPECT_EQ(CurrentFontName(), QStringLiteral("Tahoma"));
    EXPECT_TRUE(IsLanguageActive());

    // The font then comes from the English file as it stands.
    SetIniValue(LanguageFile("English"), QStringLiteral("Language"), QStringLiteral("Font"), QStringLiteral("Arial"));
    SetIniValue(GetConfigFile(), QStringLiteral("Language"), QStringLiteral("Language"), QStringLiteral("Klingon"));
    InitLanguage();
    EXPECT_EQ(CurrentLanguage(), QStringLiteral("English"));
    EXPECT_EQ(CurrentFontName(), QStringLiteral("Arial"));
}

TEST_F(LanguageFiles, a_new_text_adds_one_line_to_mnemonic_and_to_the_language)
{
    InitLanguage();
    EXPECT_EQ(TranslateText(QStringLiteral("File '%0%' not exists|||a.txt")), QStringLiteral("File 'a.txt' not exists"));
    EXPECT_EQ(TranslateText(QStringLiteral("File '%0%' not exists|||b.txt")), QStringLiteral("File 'b.txt' not exists"));
    EXPECT_EQ(GeneralCount(Mnemonic()), 1);
    EXPECT_EQ(GeneralCount(LanguageFile("English")), 1);
    // The key's text is the message with its placeholder.
    EXPECT_EQ(GetIniValue(Mnemonic(), QStringLiteral("General"), DigestStrToHexStr(QStringLiteral("File '%0%' not exists"))),
              QStringLiteral("File '%0%' not exists"));
}

TEST_F(LanguageFiles, a_text_without_letters_is_neither_translated_nor_written)
{
    InitLanguage();
    EXPECT_EQ(GetTranslation(QStringLiteral("12345")), QStringLiteral("12345"));
    EXPECT_EQ(GeneralCount(Mnemonic()), 0);
}

TEST_F(LanguageFiles, a_translation_edited_while_running_is_seen_at_once_and_keeps_its_placeholders)
{
    sandbox.WriteFile(QStringLiteral("program/Language/Deutsch.ini"), "[Language]\nFont=Arial\n");
    SetLanguage(QStringLiteral("Deutsch"));
    EXPECT_EQ(GetIniValue(GetConfigFile(), QStringLiteral("Language"), QStringLiteral("Language")), QStringLiteral("Deutsch"));
    const QString message = QStringLiteral("File '%0%' not exists");
    EXPECT_EQ(TranslateText(message + QStringLiteral("|||x")), QStringLiteral("File 'x' not exists"));

    SetIniValue(LanguageFile("Deutsch"), QStringLiteral("General"), DigestStrToHexStr(message),
                QStringLiteral("Datei '%0%' existiert nicht"));
    EXPECT_EQ(TranslateText(message + QStringLiteral("|||x")), QStringLiteral("Datei 'x' existiert nicht"));

    SetIniValue(LanguageFile("Deutsch"), QStringLiteral("General"), DigestStrToHexStr(message),
                EncodeLanguageValue(QString::fromUtf8("Файл '%0%' не существует")));
    EXPECT_EQ(TranslateText(message + QStringLiteral("|||x")), QString::fromUtf8("Файл 'x' не существует"));
    // The mnemonic keeps the English text.
    EXPECT_EQ(GetIniValue(Mnemonic(), QStringLiteral("General"), DigestStrToHexStr(message)), message);
}

TEST_F(LanguageFiles, a_window_caption_adds_its_pieces_in_order_and_translates_only_the_fixed_words)
{
    CaptionState state;
    state.withProjectName = true;
    // No project: no " - " part, and offline or read-only tell nothing.
    state.offline = true;
    state.readOnly = true;
    EXPECT_EQ(ComposeWindowCaption(state), QStringLiteral("Norvane Fendrix [Approval Module]"));

    state.batchMode = true;
    state.kind = MainWindowKind::Check;
    EXPECT_EQ(ComposeWindowCaption(state), QStringLiteral("Norvane Fendrix batch mode [Envelope Builder and Interference Checker Module]"));

    sandbox.WriteFile(QStringLiteral("program/Language/Deutsch.ini"), "[Language]\nFont=Arial\n");
    SetLanguage(QStringLiteral("Deutsch"));
    state = CaptionState{};
    state.offline = true;
    state.readOnly = true;
    state.projectName = QStringLiteral("P1");
    state.clashFile = QStringLiteral("  /data/p1.fxdb ");
    state.withProjectName = true;
    const QString fixed = QStringLiteral("Norvane Fendrix [Approval Module] [Offline] [Read only]");
    EXPECT_EQ(ComposeWindowCaption(state), fixed + QStringLiteral(" [/data/p1.fxdb] - P1"));
    SetIniValue(LanguageFile("Deutsch"), QStringLiteral("General"), DigestStrToHexStr(fixed),
                QStringLiteral("Norvane Fendrix [Freigabemodul] [Offline] [Nur lesen]"));
    state.projectName = QStringLiteral("P2");
    state.clashFile.clear();
    EXPECT_EQ(ComposeWindowCaption(state), QStringLiteral("Norvane Fendrix [Freigabemodul] [Offline] [Nur lesen] - P2"));

    // Neither the path nor a project name became a text of the language files.
    QStringList names, values;
    GetIniSection2Array(Mnemonic(), QStringLiteral("General"), names, values, false);
    for (const QString &text : values) {
        EXPECT_FALSE(text.contains(QStringLiteral("P1")) || text.contains(QStringLiteral("P2")) ||
                     text.contains(QStringLiteral("p1.fxdb"))) << qPrintable(text);
    }
    EXPECT_TRUE(values.contains(fixed));
}
