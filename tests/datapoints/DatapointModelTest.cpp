#include "DatapointModel.h"
#include "ProblemSummary.h"
#include "StoreFixture.h"

#include <QSignalSpy>

namespace
{

class DatapointModel : public TStoreFixture
{
protected:
    DatapointModel() { Import(QStringLiteral("haus.esf"), EsfLine("1/1/1", "Eins") + EsfLine("1/1/2", "Zwei")); }

    QModelIndex Find(const TDatapointModel& model, const QString& address) const
    {
        return model.match(model.index(0, 0), Qt::DisplayRole, address, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }
};

} // namespace

TEST_F(DatapointModel, IsResetAroundEveryChangeOfTheStore)
{
    const TDatapointModel model(m_store, nullptr);
    QStringList seen;
    QObject::connect(&model, &QAbstractItemModel::modelAboutToBeReset, &model,
                     [&] { seen.append(QStringLiteral("before ") + Names(m_store.Datapoints()).join(u' ')); });
    QObject::connect(&model, &QAbstractItemModel::modelReset, &model, [&] {
        seen.append(QStringLiteral("after ") + Names(m_store.Datapoints()).join(u' '));
        EXPECT_EQ(model.ShownDatapoints(), m_store.Datapoints().size());
    });
    Import(QStringLiteral("haus.esf"), EsfLine("1/1/9", "Neun"), QStringLiteral("haus.esf"));
    m_store.Load({});
    EXPECT_EQ(seen, QStringList({QStringLiteral("before Eins Zwei"), QStringLiteral("after Neun"),
                                 QStringLiteral("before Neun"), QStringLiteral("after ")}));
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(DatapointModel, OutlivedByItsStoreIsNotAskedAnyMore)
{
    {
        const TDatapointModel model(m_store, nullptr);
        EXPECT_EQ(model.ShownDatapoints(), 2);
    }
    m_store.Load(Directory());
    EXPECT_EQ(m_store.Datapoints().size(), 2);
}

TEST_F(DatapointModel, SaysWhichTypeWasDecided)
{
    TDatapointModel model(m_store, nullptr);
    const QSignalSpy changes(&model, &QAbstractItemModel::dataChanged);
    const QSignalSpy layouts(&model, &QAbstractItemModel::layoutChanged);
    const QModelIndex two = Find(model, QStringLiteral("1/1/2"));
    m_store.SetEisNumber(*model.DatapointAt(two), 5);
    model.NoteType(two);
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex(), two.siblingAtColumn(TDatapointModel::ColumnType));
    EXPECT_EQ(changes[0][1].toModelIndex(), two.siblingAtColumn(TDatapointModel::ColumnType));
    EXPECT_TRUE(layouts.isEmpty());
}

TEST_F(DatapointModel, FindsTheShownRowsOfItsNodesOnly)
{
    TDatapointModel model(m_store, nullptr);
    const int one = model.NodeOf(Find(model, QStringLiteral("1/1/1")));
    const int two = model.NodeOf(Find(model, QStringLiteral("1/1/2")));
    model.SetFilter(QStringLiteral("zwei"));
    EXPECT_FALSE(model.IndexOf(one).isValid());
    EXPECT_EQ(model.IndexOf(two), Find(model, QStringLiteral("1/1/2")));
    EXPECT_EQ(model.ShownGroups().size(), 2U);
    model.SetFilter(QStringLiteral("gibt es nicht"));
    EXPECT_FALSE(model.IndexOf(two).isValid());
    EXPECT_FALSE(model.IndexOf(-1).isValid());
    EXPECT_TRUE(model.ShownGroups().empty());
}

TEST(ProblemSummary, ShowsTheFirstOfEachFileAndCountsTheRest)
{
    QList<TFileProblem> problems;
    for (int line = 1; line <= 4341; ++line)
        problems.append({.File = QStringLiteral("a.esf"), .Problem = {.Line = line, .Reason = QStringLiteral("x")}});
    problems.append({.File = QStringLiteral("b.esf"), .Problem = {.Line = 7, .Reason = QStringLiteral("y")}});
    EXPECT_EQ(SummarizeProblems(problems, 2),
              QStringList({QStringLiteral("a.esf, Zeile 1: x"), QStringLiteral("a.esf, Zeile 2: x"),
                           QStringLiteral("a.esf: ... und 4.339 weitere, zusammen 4.341. \"Meldungen anzeigen...\" "
                                          "zeigt alle."),
                           QStringLiteral("b.esf, Zeile 7: y")}));
    EXPECT_EQ(SummarizeProblems(problems.first(2), 2).size(), 2);
    EXPECT_TRUE(SummarizeProblems({}, 2).isEmpty());
}
