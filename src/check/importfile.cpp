#include "check/importfile.h"

#include "check/messages.h"
#include "check/projecttree.h"
#include "check/treesource.h"
#include "frame/events.h"
#include "frame/failure.h"
#include "frame/fileops.h"
#include "frame/logmessage.h"
#include "frame/windows1252.h"

#include <QHash>
#include <QStringDecoder>

namespace fx {

namespace {

QString RightTrimmed(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1).isSpace())
        --end;
    return text.left(end);
}

bool SameLetter(QChar a, QChar b)
{
    return a == b || a.toCaseFolded() == b.toCaseFolded();
}

bool HasWildcard(const QString &pattern)
{
    return pattern.contains(QLatin1Char('*')) || pattern.contains(QLatin1Char('%'));
}

// One model of pdtable_113, with the sub-projects its area belongs to.
struct ModelRow
{
    QString discipline;
    QString area;
    QString modelNo;
};

// The keys of the path to a model: discipline, [sub-project,] area, model. One path for each
// sub-project its area belongs to, or the one without.
QStringList ModelKeys(const ModelRow &model, const QStringList &subProjects)
{
    const QString discipline = TreeChildKey(QString(), TreeLevel::Discipline, model.discipline);
    QStringList keys;
    const QStringList parents = subProjects.isEmpty() ? QStringList{discipline} : [&] {
        QStringList list;
        for (const QString &subProject : subProjects)
            list << TreeChildKey(discipline, TreeLevel::SubProject, subProject);
        return list;
    }();
    for (const QString &parent : parents)
        keys << TreeChildKey(TreeChildKey(parent, TreeLevel::Area, model.area), TreeLevel::Model, model.modelNo);
    return keys;
}

QString NumberText(const QVariant &value)
{
    bool ok = false;
    const double number = value.toString().trimmed().toDouble(&ok);
    return ok && number == double(qint64(number)) ? QString::number(qint64(number)) : value.toString().trimmed();
}

} // namespace

bool IsLikeModelNo(const QString &text, const QString &pattern)
{
    const QString subject = RightTrimmed(text);
    // Greedy matching with one step back to the last wildcard: linear for the patterns lists hold.
    qsizetype t = 0, p = 0, starP = -1, starT = 0;
    while (t < subject.size()) {
        if (p < pattern.size() && (pattern.at(p) == QLatin1Char('*') || pattern.at(p) == QLatin1Char('%'))) {
            starP = p++;
            starT = t;
        } else if (p < pattern.size() && SameLetter(pattern.at(p), subject.at(t))) {
            ++p;
            ++t;
        } else if (starP >= 0) {
            p = starP + 1;
            t = ++starT;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && (pattern.at(p) == QLatin1Char('*') || pattern.at(p) == QLatin1Char('%')))
        ++p;
    return p == pattern.size();
}

QStringList ReadListFileLines(const QString &file)
{
    return Frame("ReadListFileLines", [&] {
        const QByteArray bytes = ReadFile2Bytes(file);
        QString text;
        if (const auto encoding = QStringConverter::encodingForData(bytes)) {
            QStringDecoder decoder(*encoding);
            text = decoder(bytes);
        } else {
            QStringDecoder utf8(QStringConverter::Utf8);
            text = utf8(bytes);
            if (utf8.hasError())
                text = FromWindows1252(bytes);
        }
        if (text.startsWith(QChar(0xFEFF)))
            text.remove(0, 1);
        QStringList lines;
        for (const QString &line : text.split(QLatin1Char('\n'))) {
            const QString trimmed = line.trimmed();
            if (!trimmed.isEmpty())
                lines << trimmed;
        }
        return lines;
    });
}

int ImportFile(const QString &file, ProjectTreeModel &tree)
{
    return Frame("ImportFile", [&] {
        LogMessage(msg::ImportingFile, {file});
        const QStringList lines = ReadListFileLines(file);
        if (lines.isEmpty())
            Raise(msg::ImportFileEmpty, {file});
        tree.NodeCheck(tree.RootIndex(), false);
        LogMessage(msg::ImportReadingModels, {});

        const Recordset models = ReadProjectTable(QStringLiteral("pdtable_113"),
                                                  QStringLiteral("SELECT discipline_indx_no, area_index_no, model_no FROM pdtable_113;"));
        const Recordset areas = ReadProjectTable(QStringLiteral("pdtable_117"),
                                                 QStringLiteral("SELECT sub_project_ndx_no, area_index_no FROM pdtable_117;"));
        QHash<QString, QStringList> subProjectsOfArea;
        for (const QVariantList &row : areas.Rows())
            subProjectsOfArea[NumberText(row.at(1))] << NumberText(row.at(0));
        QList<ModelRow> rows;
        QHash<QString, QList<qsizetype>> byName;  // model_no, case folded, to its rows
        for (const QVariantList &row : models.Rows()) {
            const ModelRow model{NumberText(row.at(0)), NumberText(row.at(1)), row.at(2).isNull() ? QString() : row.at(2).toString()};
            byName[RightTrimmed(model.modelNo).toCaseFolded()] << rows.size();
            rows << model;
        }

        int count = 0;
        for (const QString &line : lines) {
            LogMessage(msg::ImportProcessingLine, {line});
            QList<qsizetype> hits;
            if (HasWildcard(line)) {
                for (qsizetype i = 0; i < rows.size(); ++i)
                    if (IsLikeModelNo(rows.at(i).modelNo, line))
                        hits << i;
            } else {
                hits = byName.value(line.toCaseFolded());
            }
            bool found = false;
            for (const qsizetype hit : hits) {
                const ModelRow &model = rows.at(hit);
                // Only discipline 3 has sub-projects in the tree; a path that the tree cannot reach
                // (a model the restricted tree leaves out) is no hit.
                const QStringList subProjects = model.discipline == QLatin1String("3") ? subProjectsOfArea.value(model.area) : QStringList();
                for (const QString &key : ModelKeys(model, subProjects)) {
                    const QModelIndex node = tree.ReachIndex(key);
                    if (!node.isValid())
                        continue;
                    tree.NodeCheck(node, true);
                    LogMessage(msg::ImportModelFound, {RightTrimmed(model.modelNo)});
                    ++count;
                    found = true;
                    break;
                }
                DoEventsIfInput();
            }
            if (!found)
                LogMessage(msg::ImportModelNotFound, {line});
        }
        LogMessage(msg::ImportModelsFound, {QString::number(count)});
        LogMessage(msg::ImportFileImported, {});
        return count;
    });
}

} // namespace fx
