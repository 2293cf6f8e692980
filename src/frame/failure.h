#pragma once
// The one failure type of the program: number, source and description in argument form.

#include <QString>
#include <QStringList>

#include <exception>
#include <utility>

namespace fx {

/// Joins a message and its arguments: message + "|||" + a + "|||" + b. Translation keys on the
/// message alone, so the message is always the constant text with its placeholders.
QString ArgForm(const QString &message, const QStringList &args = {});
inline QString ArgForm(const char *message, const QStringList &args = {})
{
    return ArgForm(QString::fromUtf8(message), args);
}

/// A failure on its way up the call chain.
///
/// Invariant: `description` is in argument form. A failure raised where it is detected has an
/// empty source; each procedure frame it passes sets the source to its own name and, from the
/// second frame on, prefixes the description with the previous source and ": " (see PassedThrough).
class Failure : public std::exception
{
public:
    Failure(qint32 number, QString source, QString description);

    qint32 Number() const { return m_number; }
    const QString &Source() const { return m_source; }
    const QString &Description() const { return m_description; }
    const char *what() const noexcept override;

    /// The failure as the exit block of `procedure` raises it on.
    Failure PassedThrough(const QString &procedure) const;

    /// True for number 2 with the description "exit": a silent end, never shown.
    bool IsSilentExit() const;

private:
    qint32 m_number;
    QString m_source;
    QString m_description;
    QByteArray m_what;
};

/// Raises number 1 (or `number`) with `message` and its arguments, no source.
[[noreturn]] void Raise(const char *message, const QStringList &args = {}, qint32 number = 1);
[[noreturn]] void Raise(const QString &message, const QStringList &args = {}, qint32 number = 1);

/// Raises the silent end: number 2, "exit".
[[noreturn]] void RaiseExit();

/// The procedure frame: runs `body`; a failure leaving it is raised on with `procedure` as its
/// source and the description grown by the frame rule. Any other exception becomes number 1.
/// Clean-up belongs in destructors of the body's locals, which run before the failure travels on.
template <typename Body>
decltype(auto) Frame(const char *procedure, Body &&body)
{
    try {
        return std::forward<Body>(body)();
    } catch (const Failure &failure) {
        throw failure.PassedThrough(QString::fromUtf8(procedure));
    } catch (const std::exception &e) {
        throw Failure(1, QString(), QString::fromLocal8Bit(e.what())).PassedThrough(QString::fromUtf8(procedure));
    }
}

} // namespace fx
