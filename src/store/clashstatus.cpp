#include "store/clashstatus.h"

#include "frame/failure.h"
#include "frame/logmessage.h"
#include "pds/jetfunctions.h"
#include "pds/localdb.h"
#include "store/clashstore.h"
#include "store/clashtables.h"
#include "store/description.h"
#include "store/statusmessages.h"

#include <QDateTime>
#include <QStringList>

namespace fx {

namespace {

// A review comment is trimmed of blanks only, as the project's tools trim it.
QString TrimBlanks(const QString &text)
{
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && text.at(first) == QLatin1Char(' '))
        ++first;
    while (last > first && text.at(last - 1) == QLatin1Char(' '))
        --last;
    return text.mid(first, last - first);
}

const char *ActionLogText(qint16 action)
{
    switch (action) {
    case ClashActionApproveReal:
        return msg::StatusApproveReal;
    case ClashActionApproveFalse:
        return msg::StatusApproveFalse;
    default:
        return msg::StatusUnapprove;
    }
}

void LogUpdate(const QString &where, const QString &description, qint16 action)
{
    if (action == ClashActionDescription) {
        if (where.isEmpty())
            LogMessage(msg::UpdatingClashesDescriptionAll, {description});
        else
            LogMessage(msg::UpdatingClashesDescription, {description, where});
        return;
    }
    const QString what = QString::fromUtf8(ActionLogText(action));
    if (where.isEmpty())
        LogMessage(msg::UpdatingClashesStatusAll, {what, description});
    else
        LogMessage(msg::UpdatingClashesStatus, {what, description, where});
}

} // namespace

QString ClashActionText(qint16 action)
{
    switch (action) {
    case ClashActionApproveReal:
        return QStringLiteral("Approve Real Clash");
    case ClashActionApproveFalse:
        return QStringLiteral("Approve False Clash");
    case ClashActionUnapprove:
        return QStringLiteral("Unapprove Clash");
    default:
        return QString();
    }
}

void SetClashStatus(SqliteDb &db, const QString &where, qint16 action, qint64 &count, bool showDialog, bool complain,
                    const ClashStatusHooks &hooks)
{
    Frame("SetClashStatus", [&] {
        if (showDialog && (GetOptionFlag(option::ShowDescrDialog) || action == ClashActionDescription)
            && hooks.askDescription && !hooks.askDescription(action))
            return;
        qint16 mode = DescriptionModeOnlyEmpty;
        if (action != ClashActionDescription && !GetOptionFlag(option::ChangeClashDescr))
            mode = DescriptionModeLeave;
        else if (GetOptionFlag(option::OverwriteClashDescr))
            mode = DescriptionModeOverwrite;
        SetClashStatusA(db, where, GetDescription(action, true), action, mode, count, hooks);
        if (count != 0) {
            if (hooks.clashesChanged)
                hooks.clashesChanged();
        } else if (complain) {
            Raise(msg::NoClashesUpdated);
        }
    });
}

void SetClashStatusA(SqliteDb &db, const QString &where, const QString &description, qint16 action, qint16 mode,
                     qint64 &count, const ClashStatusHooks &hooks)
{
    Frame("SetClashStatusA", [&] {
        LogUpdate(where, description, action);
        const QString comment = TrimBlanks(description);
        if (comment.size() > MaxReviewCommentLength)
            Raise(msg::ValueTooLong,
                  {QStringLiteral("review_comment"), description, QString::number(MaxReviewCommentLength)});
        if (hooks.checkDatabaseSize)
            hooks.checkDatabaseSize();

        const QString actionText = ClashActionText(action);
        QString sql = QStringLiteral("UPDATE [%1] SET ").arg(ClashesTableName());
        if (action != ClashActionDescription) {
            sql += QStringLiteral("[status] = %1, [action] = %2, ")
                       .arg(DBQuote(action == ClashActionUnapprove ? QStringLiteral("Unapproved")
                                                                   : QStringLiteral("Approved")),
                            DBQuote(actionText));
        }
        if (mode != DescriptionModeLeave)
            sql += QStringLiteral("[review_comment] = %1, ")
                       .arg(comment.isEmpty() ? QStringLiteral("NULL") : DBQuote(comment));
        // Every change stamps the clash, also one that sets only a description.
        sql += QStringLiteral("[recent_review_date] = ") + JetDateLiteral(QDateTime::currentDateTime());

        // A clash in the wanted state already is neither touched nor counted. NULL <> text is
        // not true, as in the project's own database, so a clash without an action is skipped.
        QStringList conditions;
        if (action != ClashActionDescription)
            conditions << QStringLiteral("LCASE([action]) <> %1").arg(DBQuote(actionText.toLower()));
        if (mode == DescriptionModeOnlyEmpty)
            conditions << QStringLiteral("([review_comment] IS NULL OR LEN([review_comment]) = 0)");
        if (!where.isEmpty())
            conditions << QLatin1Char('(') + where + QLatin1Char(')');
        if (!conditions.isEmpty())
            sql += QStringLiteral(" WHERE(") + conditions.join(QStringLiteral(" AND ")) + QLatin1Char(')');
        sql += QLatin1Char(';');

        count = MDBWrite(db, sql);
        LogMessage(msg::ClashesUpdated, {QString::number(count)});
    });
}

ClashStatusHooks OpenStoreStatusHooks(std::function<bool(qint16 action)> askDescription)
{
    ClashStatusHooks hooks;
    hooks.askDescription = std::move(askDescription);
    hooks.checkDatabaseSize = [] { CheckIfMaxDBSizeIsReached(QString(), true); };
    hooks.clashesChanged = [] { SetClashesChanged(true); };
    return hooks;
}

void SetClashStatus(const QString &where, qint16 action, qint64 &count, bool showDialog, bool complain,
                    std::function<bool(qint16 action)> askDescription)
{
    SetClashStatus(ClashConnection(), where, action, count, showDialog, complain,
                   OpenStoreStatusHooks(std::move(askDescription)));
}

void SetClashStatusA(const QString &where, const QString &description, qint16 action, qint16 mode, qint64 &count)
{
    SetClashStatusA(ClashConnection(), where, description, action, mode, count, OpenStoreStatusHooks());
}

} // namespace fx
