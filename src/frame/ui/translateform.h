#pragma once
// Translation of whole windows: every caption, label, button and tool tip goes through the
// language files, and the English text stays with the control so a later language starts
// from it again.

#include <QString>

class QMenu;
class QWidget;

namespace fx {

/// The dynamic property that keeps a control's English text.
inline constexpr char EnglishTextProperty[] = "fxEnglish";
/// The dynamic property that keeps an action's English tool tip where it has one of its own.
inline constexpr char EnglishToolTipProperty[] = "fxEnglishToolTip";
/// Set to true on a control (or a window, for its title) whose text the window fills itself,
/// already translated: TranslateForm leaves that text alone.
inline constexpr char NoTranslateProperty[] = "fxNoTranslate";

/// Translates the window's title and its controls (text boxes, lists and trees keep their
/// content), its toolbars' tool tips and its menus. Does nothing while no language is active.
void TranslateForm(QWidget *form);

/// Translates the menus of `form`; the recent-project items keep their file names.
void TranslateMenuA(QWidget *form);

/// Puts one entry "Menu_Lang_LL<name>" into `languageMenu` for each language file of the
/// language folder (Mnemonic.ini aside), checked for the current language, after removing the
/// old ones; stores the current language in Config.ini. Raises "Directory with language config
/// files: '%0%' not exists" when the folder is missing.
void InitLanguageMenu(QMenu *languageMenu);

/// The language entry `key` ("Menu_Lang_LL<name>") was clicked: checks it alone, selects the
/// language and translates every open window.
void SetLanguageFromMenu(QMenu *languageMenu, const QString &key);

} // namespace fx
