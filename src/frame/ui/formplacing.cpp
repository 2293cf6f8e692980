#include "frame/ui/formplacing.h"

#include "frame/failure.h"
#include "frame/formplace.h"
#include "frame/messagebox.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace fx {

namespace {

QRect AvailableScreen()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

// Saves the window's place each time it is hidden, which every way of closing it passes.
class FormPlaceKeeper : public QObject
{
public:
    FormPlaceKeeper(QWidget *form, QString formName) : QObject(form), m_form(form), m_formName(std::move(formName))
    {
        form->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == m_form && event->type() == QEvent::Hide && !m_form->isMinimized())
            SaveFormPlace(m_form, m_formName);
        return false;
    }

private:
    QWidget *m_form;
    QString m_formName;
};

} // namespace

void RestoreFormPlace(QWidget *form, const QString &formName)
{
    try {
        Frame("RestoreFormPlace", [&] {
            const std::optional<FormPlace> place = LoadFormSettings(formName, AvailableScreen());
            if (!place)
                return;
            if (place->HasPosition)
                form->setGeometry(place->Geometry());
            // A window is never brought back minimised: it would seem not to open at all.
            if (place->WindowState == FormPlace::Maximized)
                form->setWindowState(form->windowState() | Qt::WindowMaximized);
        });
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
}

void SaveFormPlace(const QWidget *form, const QString &formName)
{
    try {
        Frame("SaveFormPlace", [&] {
            FormPlace place;
            if (form->isMaximized()) {
                place.WindowState = FormPlace::Maximized;
            } else if (form->isMinimized()) {
                place.WindowState = FormPlace::Minimized;
            } else {
                const QRect geometry = form->geometry();
                place.Top = geometry.top();
                place.Left = geometry.left();
                place.Height = geometry.height();
                place.Width = geometry.width();
            }
            SaveFormSettings(formName, place);
        });
    } catch (const Failure &failure) {
        ShowMessage(failure, MbIconExclamation);
    }
}

void KeepFormPlace(QWidget *form, const QString &formName)
{
    RestoreFormPlace(form, formName);
    new FormPlaceKeeper(form, formName);
}

} // namespace fx
