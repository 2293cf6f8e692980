// The hard cases of a project schema: rows that the clash store must clean away, tolerate or
// refuse, each listed with the keys that find it.

#include "pdssim/schemabuilder.h"

#include "pds/localdb.h"

namespace pdssim {

namespace {

using Keys = QList<QPair<QString, QString>>;

QString Num(qint64 value)
{
    return QString::number(value);
}

void Note(SchemaBuilder &b, const char *name, const char *table, const Keys &keys, const char *note)
{
    b.cases.append(EdgeCase{QString::fromLatin1(name), QString::fromLatin1(table), keys, QString::fromUtf8(note)});
}

/// A clash between two components in the first interference area, unreviewed.
ClashRow NewClash(SchemaBuilder &b, int compA, int compB)
{
    ClashRow clash;
    clash.id = b.nextClashId++;
    clash.compA = compA;
    clash.compB = compB;
    clash.area = clash.areaB = b.interferenceAreas.front().index;
    clash.actionDiscipline = b.models.at(size_t(b.components.at(size_t(compA)))).discipline;
    return clash;
}

/// Writes the clash with one occurrence and gives its id.
qint64 WritePlain(SchemaBuilder &b, const ClashRow &clash)
{
    b.WriteClash(clash);
    const auto [boxA, boxB] = b.ClashBoxes(0);
    b.WriteOccurrence(clash.id, 1, boxA, boxB);
    return clash.id;
}

void AddLockCases(SchemaBuilder &b)
{
    const qint64 since = UtcSeconds(2021, 5, 3, 8);
    b.Execute(QStringLiteral("UPDATE pdtable_102 SET lock_owner = %1, lock_date = %2, lock_status = 1 WHERE type_of_rdb_data = 99;")
                  .arg(fx::DBQuote(QStringLiteral("FX_jdoe")), Num(since)));
    Note(b, "project_locked", "pdtable_102", {{"type_of_rdb_data", "99"}, {"lock_owner", "FX_jdoe"}, {"lock_date", Num(since)}},
         "the project is locked by another user");
    const int area = b.interferenceAreas.front().index;
    b.Execute(QStringLiteral("UPDATE pdtable_112 SET area_lock_owner = %1, area_lock_status = 1, area_lock_date = 0 "
                             "WHERE area_index_no = %2;").arg(fx::DBQuote(QString()), Num(area)));
    Note(b, "area_locked_without_owner", "pdtable_112", {{"area_index_no", Num(area)}, {"area_lock_owner", ""}, {"area_lock_date", "0"}},
         "an interference area is locked with an empty owner (UNKNOWN) and no date");
    Note(b, "missing_site_table", "pdtable_119", {}, "the schema has no pdtable_119; every site id reads No SiteID");
}

void AddCleaningCases(SchemaBuilder &b)
{
    ClashRow left = NewClash(b, 0, 1);
    left.status = 99;
    Note(b, "status_99", "pdtable_132", {{"unique_clash_id", Num(WritePlain(b, left))}}, "left out at load");

    const ClashRow tie = NewClash(b, 2, 3);
    b.WriteClash(tie);
    const auto [a, bb] = b.ClashBoxes(0);
    b.WriteOccurrence(tie.id, 1, a, bb);
    b.WriteOccurrence(tie.id, 2, bb, a);
    const qint64 survivor = b.WriteOccurrence(tie.id, 2, a, a);
    Note(b, "sequence_tie", "pdtable_133",
         {{"unique_clash_id", Num(tie.id)}, {"unique_sequence_no", "2"}, {"system_unique_no", Num(survivor)}},
         "two occurrences share the highest unique_sequence_no; the higher system_unique_no stays");

    ClashRow reviewed = NewClash(b, 4, 5);
    reviewed.status = 2;
    reviewed.recentReviewDate = b.newestRun.value(reviewed.area);
    WritePlain(b, reviewed);
    const qint64 date = reviewed.recentReviewDate + 7200;
    const QByteArray first("first of a tie"), second("second of a tie");
    b.WriteReview(reviewed.id, date, 3, &first, 2);
    const qint64 kept = b.WriteReview(reviewed.id, date, 2, &second, 2);
    Note(b, "review_date_tie", "pdtable_135",
         {{"unique_clash_id", Num(reviewed.id)}, {"review_date", Num(date)}, {"system_unique_no", Num(kept)}},
         "two review rows share the newest review_date; the higher system_unique_no stays");
}

void AddComponentCases(SchemaBuilder &b)
{
    const Area &area = b.designAreas.front(); // a piping area
    const QByteArray line("9000-P-CS1");
    // Row -1 of table 5 is 4294967295 unsigned: the last row of partition 8191.
    const int top = b.AddModel(1, area.index, 8191, "PIPEDGE1", 1);
    const int minusOne = b.AddComponent(top, 5, -1, "VALVE", &line);
    Note(b, "negative_row_number_minus_one", "pdtable_134",
         {{"unique_comp_id", Num(minusOne + 1)}, {"unique_clash_id", Num(WritePlain(b, NewClash(b, minusOne, 6)))},
          {"linkage", "0 5 524287 65528"}},
         "comp_row_number -1 of table 5 in partition 8191");
    const int high = b.AddModel(1, area.index, 4096, "PIPEDGE2", 1);
    const qint64 row = 4096LL * 524288 + 10 - (1LL << 32);
    const int negative = b.AddComponent(high, 3, row, "PIPE", &line);
    Note(b, "negative_row_number", "pdtable_134",
         {{"unique_comp_id", Num(negative + 1)}, {"unique_clash_id", Num(WritePlain(b, NewClash(b, negative, 7)))},
          {"comp_row_number", Num(row)}, {"linkage", "0 3 10 32768"}},
         "a row number of table 3 beyond 2^31 arrives negative");

    const int model = b.components.at(0);
    const int rowZero = b.AddComponent(model, 3, 0, "PIPE", &line);
    const int tableZero = b.AddComponent(model, 0, 7, "PIPE", &line);
    Note(b, "zero_row_number", "pdtable_134",
         {{"unique_clash_id", Num(WritePlain(b, NewClash(b, rowZero, tableZero)))},
          {"unique_comp_id_a", Num(rowZero + 1)}, {"unique_comp_id_b", Num(tableZero + 1)}},
         "both components are deleted at load; the clash keeps empty component texts");
    const int unlisted = b.AddComponent(model, 50, 12, "SUPPORT", nullptr);
    Note(b, "unlisted_table_number", "pdtable_134",
         {{"unique_comp_id", Num(unlisted + 1)}, {"unique_clash_id", Num(WritePlain(b, NewClash(b, unlisted, 8)))}},
         "table 50 has no linkage form: linkage stays null");
    const QByteArray pieces("B-C");
    const int split = b.AddComponent(model, 4, qint64(b.models.at(size_t(model)).partition) * 524288 + 524000, "A", &pieces);
    Note(b, "description_with_separator", "pdtable_134",
         {{"unique_comp_id", Num(split + 1)}, {"unique_clash_id", Num(WritePlain(b, NewClash(b, split, 9)))},
          {"comp", "A-B-C"}},
         "with separator - the description falls into three pieces");
    const int unlistedStatus = b.AddModel(2, b.designAreas.back().index, 1, "EQPEDGE1", 9);
    const QByteArray none("");
    const int equipment = b.AddComponent(unlistedStatus, 21, 1, "E-900", &none);
    Note(b, "unlisted_model_status", "pdtable_113",
         {{"model_index_no", Num(b.models.at(size_t(unlistedStatus)).index)},
          {"unique_clash_id", Num(WritePlain(b, NewClash(b, equipment, 10)))}, {"model_status", "9"}},
         "a model status without a [ModelStatusDefinition] entry stays as digits; secondary_descript is empty");
}

void AddClashRowCases(SchemaBuilder &b)
{
    ClashRow missingArea = NewClash(b, 11, 12);
    missingArea.area = 9999;
    Note(b, "missing_area_row", "pdtable_132", {{"unique_clash_id", Num(WritePlain(b, missingArea))}, {"area_index_no", "9999"}},
         "the clash's area has no pdtable_112 row: action_area_a reads Project");
    ClashRow type = NewClash(b, 13, 14);
    type.type = 9;
    Note(b, "unlisted_clash_type", "pdtable_132", {{"unique_clash_id", Num(WritePlain(b, type))}, {"recent_clash_type", "9"}},
         "a clash type without a [ClashTypesDefinition] entry: type reads null");
    ClashRow discipline = NewClash(b, 15, 16);
    discipline.actionDiscipline = 77;
    Note(b, "unknown_action_discipline", "pdtable_132",
         {{"unique_clash_id", Num(WritePlain(b, discipline))}, {"action_discipline", "77"}},
         "action_discipline has no pdtable_111 row");

    const auto apart = [&](const char *name, int axis, const char *note) {
        const ClashRow clash = NewClash(b, 17 + axis, 18 + axis);
        b.WriteClash(clash);
        auto [boxA, boxB] = b.ClashBoxes(0);
        boxB.lo[size_t(axis)] = boxA.hi[size_t(axis)] + 1000;
        boxB.hi[size_t(axis)] = boxA.hi[size_t(axis)] + 5000;
        b.WriteOccurrence(clash.id, 1, boxA, boxB);
        Note(b, name, "pdtable_133", {{"unique_clash_id", Num(clash.id)}}, note);
    };
    apart("ranges_apart_x", 0, "x ranges don't overlap: min_x -1, max_x and easting null");
    apart("ranges_apart_y", 1, "y ranges don't overlap: min_y, max_y and northing null");
}

void AddReviewCases(SchemaBuilder &b)
{
    const auto reviewed = [&](int status, int action, qint64 date, const QByteArray *comment) {
        ClashRow clash = NewClash(b, 20, 21);
        clash.status = status;
        clash.recentReviewDate = b.newestRun.value(clash.area);
        WritePlain(b, clash);
        const qint64 number = b.WriteReview(clash.id, date, action, comment, action == 1 ? 1 : 2);
        return std::pair<qint64, qint64>(clash.id, number);
    };
    const qint64 after = b.newestRun.value(b.interferenceAreas.front().index) + 86400;
    const QByteArray quotes("It's a \"real\" clash, isn't it?"), blanks("  leading and trailing blanks  "), empty("");
    for (const auto &[name, text] : {std::pair{"comment_with_quotes", &quotes}, std::pair{"comment_with_blanks", &blanks},
                                     std::pair{"comment_empty", &empty}}) {
        const auto [id, number] = reviewed(2, 2, after, text);
        Note(b, name, "pdtable_135", {{"unique_clash_id", Num(id)}, {"system_unique_no", Num(number)},
                                      {"review_comment", QString::fromUtf8(*text)}}, "a review comment that quoting must keep");
    }
    ClashRow approved = NewClash(b, 22, 23);
    approved.status = 2;
    Note(b, "approved_without_review", "pdtable_132", {{"unique_clash_id", Num(WritePlain(b, approved))}},
         "status 2 without a pdtable_135 row: Unapprove Clash, no comment, no date");
    Note(b, "unapproved_with_real_action", "pdtable_135", {{"unique_clash_id", Num(reviewed(1, 2, after, nullptr).first)}},
         "status 1 and action 2: Unapproved, Unapprove Clash");
    Note(b, "review_date_zero", "pdtable_135", {{"unique_clash_id", Num(reviewed(2, 2, 0, nullptr).first)}},
         "a review_date of 0 gives a null date");

    // Checked at 09:00 UTC; approved by someone else at 11:00. Approved here at 10:00 and saved
    // at 12:00, nothing may change.
    const Area area{b.nextAreaIndex++, kClashDiscipline, "INT-EDGE"};
    b.interferenceAreas.push_back(area);
    b.WriteArea(area, "Interference area of the review race", true, nullptr);
    const qint64 run = UtcSeconds(2021, 6, 1, 9), other = UtcSeconds(2021, 6, 1, 11);
    b.WriteRun(area.index, run);
    ClashRow race = NewClash(b, 24, 25);
    race.area = race.areaB = area.index;
    race.status = 2;
    race.recentReviewDate = run;
    WritePlain(b, race);
    const QByteArray theirs("approved by the other reviewer");
    b.WriteReview(race.id, other, 2, &theirs, 2);
    Note(b, "review_race", "pdtable_135",
         {{"unique_clash_id", Num(race.id)}, {"completion_date", Num(run)}, {"review_date", Num(other)},
          {"local_review_date", Num(UtcSeconds(2021, 6, 1, 10))}, {"save_date", Num(UtcSeconds(2021, 6, 1, 12))}},
         "the project's review is later than the local one: write-back changes neither row");

    // The second area was checked twice; a clash reviewed between the runs is older than the newest.
    const Area &twice = b.interferenceAreas.at(1);
    const qint64 newest = b.newestRun.value(twice.index), older = newest - 14 * 86400;
    ClashRow stale = NewClash(b, 26, 27);
    stale.area = stale.areaB = twice.index;
    stale.recentReviewDate = older;
    WritePlain(b, stale);
    const QByteArray before("reviewed between the runs");
    b.WriteReview(stale.id, older + 86400, 1, &before, 1);
    Note(b, "stale_local_stamp", "pdtable_131",
         {{"area_index_no", Num(twice.index)}, {"completion_date", Num(newest)}, {"older_completion_date", Num(older)},
          {"unique_clash_id", Num(stale.id)}},
         "two check runs of one area; only the newest counts, and a review older than it gets no new row");
}

} // namespace

void AddEdgeCases(SchemaBuilder &builder)
{
    AddLockCases(builder);
    AddCleaningCases(builder);
    AddComponentCases(builder);
    AddClashRowCases(builder);
    AddReviewCases(builder);
}

void AddFatalEdgeCases(SchemaBuilder &builder)
{
    ClashRow twin = NewClash(builder, 28, 29);
    twin.status = 99;
    WritePlain(builder, twin);
    WritePlain(builder, twin);
    Note(builder, "duplicate_clash_id", "pdtable_132", {{"unique_clash_id", Num(twin.id)}, {"if_approval_status", "99"}},
         "two rows of one clash, both left out: the load fails all the same");
}

} // namespace pdssim
