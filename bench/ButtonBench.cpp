#include "ICmdButtons.h"
#include "Measures.h"
#include "Vlapputils.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

namespace
{

constexpr int Buttons = 1000;

// A folder of entries, with icons as projects have them: a few for all.
class TEntryFiles
{
public:
    TEntryFiles()
    {
        QDir().mkpath(Directory());
        for (const char* icon : {"szenen", "woche", "seite", "netz"}) {
            const QString name = QStringLiteral("%1.png").arg(QString::fromLatin1(icon));
            CopyFileTo(QStringLiteral(VELMORA_EXAMPLES "/musterhaus/_buttons/") + name, Path(name), true);
        }
        for (int i = 0; i < Buttons; ++i) {
            const QString text = QStringLiteral("Caption=Befehl %1\nCommand=pane://scenes\nIcon=%2\nRemovable=yes\n")
                                     .arg(i)
                                     .arg(Path(IconOf(i)));
            WriteFile(Path(NameOf(i)), text.toUtf8());
        }
    }

    QString Directory() const { return m_directory.filePath(QStringLiteral("_buttons")); }
    QString Path(const QString& name) const { return Directory() + u'/' + name; }
    static QString NameOf(int index) { return QStringLiteral("befehl%1.uri").arg(index); }
    static QString IconOf(int index)
    {
        static const QStringList icons{QStringLiteral("szenen.png"), QStringLiteral("woche.png"),
                                       QStringLiteral("seite.png"), QStringLiteral("netz.png")};
        return icons[index % icons.size()];
    }

private:
    QTemporaryDir m_directory;
};

const TEntryFiles& Files()
{
    static const TEntryFiles files;
    return files;
}

void Show(QWidget& widget)
{
    widget.resize(240, 800);
    widget.show();
    QApplication::processEvents();
}

// A command to the shown bar, until it is painted.
void LoadButtons(benchmark::State& state)
{
    TICmdButtons bar(nullptr);
    Show(bar);
    const QByteArray command = "Velmora.CmdButtons.1://" + Files().Directory().toUtf8();
    for ([[maybe_unused]] auto _ : state) {
        bool handled = false;
        bar.ExecuteCmd(command.constData(), handled);
        QApplication::processEvents();
        if (bar.Buttons().size() != Buttons)
            state.SkipWithError("buttons are missing");
    }
}

QToolButton* MakeWidget(QWidget* parent, int index)
{
    const QList<QByteArray> lines = ReadFile(Files().Path(TEntryFiles::NameOf(index))).split('\n');
    auto* button = new QToolButton(parent);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    button->setFixedHeight(75);
    button->setText(QString::fromUtf8(lines[0]));
    button->setToolTip(QString::fromUtf8(lines[1]));
    button->setIcon(QIcon(QPixmap(Files().Path(TEntryFiles::IconOf(index)))));
    return button;
}

// The same files read and as many tool buttons made, in the place of the former ones, until they are painted.
void MakeWidgets(benchmark::State& state)
{
    QScrollArea area;
    area.setWidgetResizable(true);
    Show(area);
    for ([[maybe_unused]] auto _ : state) {
        auto* content = new QWidget;
        auto* layout = new QVBoxLayout(content);
        for (int i = 0; i < Buttons; ++i)
            layout->addWidget(MakeWidget(content, i));
        area.setWidget(content);
        QApplication::processEvents();
    }
}

} // namespace

void AddButtonMeasures()
{
    AddRatio("load 1000 buttons : read their files and make the widgets", 1.5, LoadButtons, MakeWidgets);
}
