#include "Formatting.h"
#include "IScheduleTree.h"
#include "Measures.h"
#include "SayYes.h"
#include "Vlapputils.h"
#include "Vlfilereplacer.h"

#include <QApplication>
#include <QBuffer>
#include <QTemporaryDir>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace
{

constexpr int ManyGroups = 1'000;
constexpr int DatapointsOfGroup = 100;
constexpr int EntriesOfDatapoint = 2;
constexpr int Few = 1'000;
constexpr int Many = 10'000;
constexpr double LimitSeconds = 1.5;
constexpr double LimitGrowth = 12.0;

QByteArray Document(int groups, int datapoints, int entries)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    TLineWriter writer(buffer);
    writer.Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n<eibnet>\r\n");
    for (int g = 0; g < groups; ++g) {
        writer.Write("<nodes name=\"Gebäude %d\" access=\"5\">\r\n", g);
        for (int d = 0; d < datapoints; ++d) {
            writer.Write("<node name=\"%d/%d/%d\" alias=\"Beleuchtung Büro %d\" eis=\"1\" type=\"eib\" access=\"5\" "
                         "enabled=\"1\" minv=\"0\" maxv=\"1\">\r\n",
                         g % 16, d >> 8, d & 255, d);
            for (int e = 0; e < entries; ++e) {
                writer.Write("<schedule time=\"%d:30\" dow=\"1111100\" value=\"%d\" enabled=\"1\" "
                             "postprocess=\"0\"/>\r\n",
                             10 + e % 14, e % 2);
            }
            writer.Write("</node>\r\n");
        }
        writer.Write("</nodes>\r\n");
    }
    writer.Write("</eibnet>\r\n");
    return buffer.data();
}

// A document that is made when it is first needed and goes with the program.
class TScheduleFile
{
public:
    TScheduleFile(int groups, int datapoints, int entries)
    {
        WriteFile(Path("schedule.xml"), Document(groups, datapoints, entries));
    }

    QString Path(const char* name = "schedule.xml") const { return m_directory.filePath(QString::fromLatin1(name)); }

private:
    QTemporaryDir m_directory;
};

const TScheduleFile& ManyEntries()
{
    static const TScheduleFile file(ManyGroups, DatapointsOfGroup, EntriesOfDatapoint);
    return file;
}

// A frame in a shown window, as the user has it.
std::unique_ptr<TScheduleTreeFrame> ShownFrame(const QString& fileName)
{
    auto frame = std::make_unique<TScheduleTreeFrame>();
    frame->setWindowTitle(QStringLiteral("Wochenschaltplan[*]"));
    frame->resize(400, 800);
    frame->show();
    frame->LoadSchedules(fileName);
    QApplication::processEvents();
    return frame;
}

void LoadShown(benchmark::State& state)
{
    const std::unique_ptr<TScheduleTreeFrame> frame = ShownFrame(ManyEntries().Path());
    for ([[maybe_unused]] auto _ : state) {
        frame->LoadSchedules(ManyEntries().Path());
        QApplication::processEvents();
    }
}

void Parse(benchmark::State& state)
{
    const QByteArray path = ManyEntries().Path().toLocal8Bit();
    for ([[maybe_unused]] auto _ : state) {
        xmlDocPtr document = xmlParseFile(path.constData());
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}

void Write(benchmark::State& state)
{
    const std::unique_ptr<TScheduleTreeFrame> frame = ShownFrame(ManyEntries().Path());
    for ([[maybe_unused]] auto _ : state) {
        TFileReplacer replacer(ManyEntries().Path("written.xml"));
        frame->SchedulesToStream(replacer.Device());
        replacer.Commit();
    }
}

void Save(benchmark::State& state)
{
    xmlDocPtr document = xmlParseFile(ManyEntries().Path().toLocal8Bit().constData());
    const QByteArray target = ManyEntries().Path("saved.xml").toLocal8Bit();
    for ([[maybe_unused]] auto _ : state)
        xmlSaveFile(target.constData(), document);
    xmlFreeDoc(document);
}

// A shown tree of four groups: the first has one datapoint with `count` entries, the second `count` datapoints.
class TEditedSchedule
{
public:
    explicit TEditedSchedule(int count)
    {
        const QByteArray entries = Document(1, 1, count);
        const QByteArray datapoints = Document(1, count, 1);
        const auto group = [](const QByteArray& document) {
            const qsizetype begin = document.indexOf("<nodes");
            return document.mid(begin, document.indexOf("</eibnet>") - begin);
        };
        WriteFile(m_directory.filePath(QStringLiteral("schedule.xml")), entries.left(entries.indexOf("<nodes")) +
                                                                            group(entries) + group(datapoints) +
                                                                            "<nodes/><nodes/></eibnet>");
        Frame = ShownFrame(m_directory.filePath(QStringLiteral("schedule.xml")));
        Frame->Root()->Child(0)->setExpanded(true);
        Frame->Root()->Child(0)->Child(0)->setExpanded(true);
        Frame->Root()->Child(1)->setExpanded(true);
    }

    TScheduleNode* Group(int index) const { return Frame->Root()->Child(index); }

    void SelectChildren(const TScheduleNode* parent) const
    {
        Frame->SelectNode(parent->Child(0));
        const QModelIndex first = Frame->currentIndex();
        Frame->selectionModel()->select(QItemSelection(first, first.siblingAtRow(parent->Count() - 1)),
                                        QItemSelectionModel::ClearAndSelect);
    }

    TSayYes Yes;
    std::unique_ptr<TScheduleTreeFrame> Frame;

private:
    QTemporaryDir m_directory;
};

template <class TPrepare, class TEdit> void Measure(benchmark::State& state, int count, TPrepare prepare, TEdit edit)
{
    const TEditedSchedule schedule(count);
    prepare(schedule);
    for ([[maybe_unused]] auto _ : state) {
        edit(*schedule.Frame);
        QApplication::processEvents();
    }
}

template <int Count> void DeleteEntries(benchmark::State& state)
{
    Measure(
        state, Count, [](const TEditedSchedule& schedule) { schedule.SelectChildren(schedule.Group(0)->Child(0)); },
        [](TScheduleTreeFrame& frame) { frame.MenuAction_DeleteExecute(); });
}

template <int Count> void PasteDatapoints(benchmark::State& state)
{
    Measure(
        state, Count,
        [](const TEditedSchedule& schedule) {
            schedule.SelectChildren(schedule.Group(1));
            schedule.Frame->MenuAction_CopyExecute();
            schedule.Frame->SelectNode(schedule.Group(2));
        },
        [](TScheduleTreeFrame& frame) { frame.MenuAction_PasteBeforeExecute(); });
}

template <int Count> void CopyGroup(benchmark::State& state)
{
    Measure(
        state, Count, [](const TEditedSchedule& schedule) { schedule.Frame->SelectNode(schedule.Group(1)); },
        [](TScheduleTreeFrame& frame) { frame.MenuAction_CopyExecute(); });
}

void AddGrowth(const std::string& name, void (*many)(benchmark::State&), void (*few)(benchmark::State&))
{
    AddMilliseconds(name + ", 10000", LimitSeconds * 1000, many);
    AddRatio(name + ", 10000 : 1000", LimitGrowth, many, few);
}

} // namespace

void AddScheduleMeasures()
{
    AddRatio("load a schedule of 300000 nodes : parse", 1.6, LoadShown, Parse);
    AddRatio("write a schedule of 300000 nodes : xmlSaveFile", 1.0, Write, Save);
    AddGrowth("delete selected entries", DeleteEntries<Many>, DeleteEntries<Few>);
    AddGrowth("paste datapoints", PasteDatapoints<Many>, PasteDatapoints<Few>);
    AddGrowth("copy a group of datapoints", CopyGroup<Many>, CopyGroup<Few>);
}
