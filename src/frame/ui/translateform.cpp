#include "frame/ui/translateform.h"

#include "frame/configkeys.h"
#include "frame/failure.h"
#include "frame/messages.h"
#include "frame/translation.h"
#include "frame/ui/actionkey.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include <functional>

namespace fx {

namespace {

const QString kLanguageEntryPrefix = QStringLiteral("Menu_Lang_LL");

bool IsLeftOut(const QObject *control)
{
    return control->property(NoTranslateProperty).toBool();
}

void ApplyFont(QWidget *widget)
{
    const QString fontName = CurrentFontName();
    if (fontName.isEmpty() || widget->font().family() == fontName)
        return;
    QFont font = widget->font();
    font.setFamily(fontName);
    widget->setFont(font);
}

// The English text the control had when it was first met, which every language starts from.
QString EnglishOf(QObject *control, const char *property, const QString &shown)
{
    const QVariant kept = control->property(property);
    if (kept.isValid())
        return kept.toString();
    control->setProperty(property, shown);
    return shown;
}

void TranslateControlText(QObject *control, const QString &shown, const std::function<void(const QString &)> &set)
{
    const QString english = EnglishOf(control, EnglishTextProperty, shown);
    if (!english.isEmpty())
        set(fx::TranslateText(english));
}

// The tool tip Qt makes of an action's text when none was given: no "&", no "...".
QString DerivedToolTip(QString text)
{
    text.remove(QStringLiteral("..."));
    text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    text.remove(QLatin1Char('&'));
    text.replace(QStringLiteral("\x01"), QStringLiteral("&"));
    return text.trimmed();
}

// Recent items show file names, which are no texts to translate.
bool IsRecentItem(const QString &key)
{
    static const QRegularExpression recent(QStringLiteral("^Menu_File_Recent(M|Project)[0-9]"));
    return recent.match(key).hasMatch();
}

void TranslateAction(QAction *action)
{
    if (action->isSeparator() || IsLeftOut(action) || IsRecentItem(ActionKey(action)))
        return;
    if (!action->property(EnglishTextProperty).isValid()) {
        const QString text = action->text();
        const QString tip = action->toolTip();
        if (!tip.isEmpty() && tip != DerivedToolTip(text))
            action->setProperty(EnglishToolTipProperty, tip);
    }
    TranslateControlText(action, action->text(), [action](const QString &text) { action->setText(text); });
    const QString englishTip = action->property(EnglishToolTipProperty).toString();
    if (!englishTip.isEmpty())
        action->setToolTip(fx::TranslateText(englishTip));
    const QString fontName = CurrentFontName();
    if (!fontName.isEmpty()) {
        QFont font = action->font();
        font.setFamily(fontName);
        action->setFont(font);
    }
}

void TranslateTabs(QTabWidget *tabs)
{
    QStringList english = tabs->property(EnglishTextProperty).toStringList();
    if (english.size() != tabs->count()) {
        english.clear();
        for (int i = 0; i < tabs->count(); ++i)
            english.append(tabs->tabText(i));
        tabs->setProperty(EnglishTextProperty, english);
    }
    for (int i = 0; i < tabs->count(); ++i)
        tabs->setTabText(i, fx::TranslateText(english[i]));
    ApplyFont(tabs);
}

void TranslateWidget(QWidget *widget)
{
    if (IsLeftOut(widget))
        return;
    if (auto *label = qobject_cast<QLabel *>(widget)) {
        if (!label->text().isEmpty() || label->property(EnglishTextProperty).isValid())
            TranslateControlText(label, label->text(), [label](const QString &text) { label->setText(text); });
    } else if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
        // A tool bar's button shows its action, which is translated as the action.
        const auto *tool = qobject_cast<QToolButton *>(button);
        if (tool && tool->defaultAction())
            return;
        TranslateControlText(button, button->text(), [button](const QString &text) { button->setText(text); });
    } else if (auto *group = qobject_cast<QGroupBox *>(widget)) {
        TranslateControlText(group, group->title(), [group](const QString &text) { group->setTitle(text); });
    } else if (auto *tabs = qobject_cast<QTabWidget *>(widget)) {
        TranslateTabs(tabs);
        return;
    } else if (qobject_cast<QStatusBar *>(widget)) {
        ApplyFont(widget);
        return;
    } else {
        return;
    }
    ApplyFont(widget);
}

} // namespace

void TranslateForm(QWidget *form)
{
    if (!form || !IsLanguageActive())
        return;
    if (!IsLeftOut(form))
        TranslateControlText(form, form->windowTitle(), [form](const QString &text) { form->setWindowTitle(text); });
    const QList<QWidget *> widgets = form->findChildren<QWidget *>();
    for (QWidget *widget : widgets)
        TranslateWidget(widget);
    for (QToolBar *toolBar : form->findChildren<QToolBar *>())
        for (QAction *action : toolBar->actions())
            TranslateAction(action);
    TranslateMenuA(form);
}

void TranslateMenuA(QWidget *form)
{
    if (!form || !IsLanguageActive())
        return;
    for (QMenu *menu : form->findChildren<QMenu *>()) {
        TranslateAction(menu->menuAction());
        for (QAction *action : menu->actions())
            TranslateAction(action);
        ApplyFont(menu);
    }
}

void InitLanguageMenu(QMenu *languageMenu)
{
    Frame("InitLanguageMenu", [&] {
        const QDir folder(LanguageDir());
        if (!folder.exists())
            Raise(msg::LanguageDirMissing, {LanguageDir()});
        // The new entries take the place of the old ones: before whatever followed them.
        QAction *before = nullptr;
        bool metEntry = false;
        for (QAction *action : languageMenu->actions()) {
            if (action->objectName().startsWith(kLanguageEntryPrefix)) {
                metEntry = true;
                languageMenu->removeAction(action);
                delete action;
            } else if (metEntry && !before) {
                before = action;
            }
        }
        const QStringList files = folder.entryList({QStringLiteral("*.ini")}, QDir::Files, QDir::Name | QDir::IgnoreCase);
        for (const QString &file : files) {
            if (file.toLower() == QLatin1String("mnemonic.ini"))
                continue;
            const QString name = QFileInfo(file).completeBaseName();
            auto *entry = new QAction(name, languageMenu);
            entry->setObjectName(kLanguageEntryPrefix + name);
            entry->setCheckable(true);
            entry->setChecked(name.compare(CurrentLanguage(), Qt::CaseInsensitive) == 0);
            // A language's name is shown as it is, in every language.
            entry->setProperty(NoTranslateProperty, true);
            languageMenu->insertAction(before, entry);
        }
        if (!CurrentLanguage().isEmpty())
            SetConfigLanguage(CurrentLanguage());
    });
}

void SetLanguageFromMenu(QMenu *languageMenu, const QString &key)
{
    Frame("SetLanguageFromMenu", [&] {
        if (!key.startsWith(kLanguageEntryPrefix))
            return;
        for (QAction *action : languageMenu->actions())
            if (action->objectName().startsWith(kLanguageEntryPrefix))
                action->setChecked(action->objectName() == key);
        SetLanguage(key.mid(kLanguageEntryPrefix.size()));
        for (QWidget *window : QApplication::topLevelWidgets())
            if (!qobject_cast<QMenu *>(window))
                TranslateForm(window);
    });
}

} // namespace fx
