#include "Options.h"

#include "Vlerrors.h"

#include <QCommandLineParser>

namespace
{

const auto Project = QStringLiteral("project");
const auto Batch = QStringLiteral("batch");
const auto Command = QStringLiteral("command");
const auto Do = QStringLiteral("do");
const auto Answer = QStringLiteral("answer");
const auto Picture = QStringLiteral("picture");
const auto QuitAfterPaint = QStringLiteral("quit-after-paint");
const auto Help = QStringLiteral("help");
const auto Version = QStringLiteral("version");

struct TOptionText
{
    QString Name;
    QString Description;
    QString ValueName;
};

const QList<TOptionText>& OptionTexts()
{
    static const QList<TOptionText> texts{
        {Project, QStringLiteral("Öffnet das Projekt im Verzeichnis DIR."), QStringLiteral("DIR")},
        {Batch, QStringLiteral("Führt aus, was die folgenden Optionen verlangen, ohne ein Fenster zu zeigen."), {}},
        {Command, QStringLiteral("Stapelbetrieb: sendet einem Bereich einen Befehlstext. Mehrfach möglich."),
         QStringLiteral("BEREICH=TEXT")},
        {Do, QStringLiteral("Stapelbetrieb: führt einen Menübefehl eines Bereichs aus. Mehrfach möglich."),
         QStringLiteral("BEREICH=MenuAction_NAME")},
        {Answer, QStringLiteral("Stapelbetrieb: Antwort auf alle Fragen, ohne diese Option \"no\"."),
         QStringLiteral("yes|no")},
        {Picture, QStringLiteral("Stapelbetrieb: speichert zuletzt ein Bild des Fensters."),
         QStringLiteral("DATEI.png")},
        {QuitAfterPaint, QStringLiteral("Beendet das Programm, sobald das Fenster einmal gezeichnet ist."), {}},
        {Help, QStringLiteral("Zeigt diese Hilfe."), {}},
        {Version, QStringLiteral("Zeigt die Version."), {}},
    };
    return texts;
}

void Describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral("Velmora Folders: Editoren für Projekte der Gebäudeleittechnik."));
    for (const TOptionText& text : OptionTexts())
        parser.addOption(QCommandLineOption(text.Name, text.Description, text.ValueName));
}

QString Spelled(const QString& option)
{
    return (option.size() == 1 ? QStringLiteral("-") : QStringLiteral("--")) + option;
}

void CheckSyntax(const QCommandLineParser& parser, bool parsed)
{
    if (!parser.unknownOptionNames().isEmpty())
        throw TUserError(QStringLiteral("Unbekannte Option: ") + Spelled(parser.unknownOptionNames().constFirst()));
    if (!parsed)
        throw TUserError(parser.errorText());
    if (!parser.positionalArguments().isEmpty())
        throw TUserError(QStringLiteral("Unbekanntes Argument: %1").arg(parser.positionalArguments().constFirst()));
}

void CheckBatch(const QCommandLineParser& parser)
{
    if (!parser.isSet(Batch)) {
        for (const QString& name : {Command, Do, Answer, Picture}) {
            if (parser.isSet(name))
                throw TUserError(QStringLiteral("Die Option --%1 gilt nur zusammen mit --batch.").arg(name));
        }
        return;
    }
    if (!parser.isSet(Project))
        throw TUserError(QStringLiteral("Der Stapelbetrieb braucht ein Projekt: --project DIR fehlt."));
    if (parser.isSet(QuitAfterPaint))
        throw TUserError(QStringLiteral("Die Option --quit-after-paint gilt nicht zusammen mit --batch."));
}

TBatchStep StepOf(const QString& option, const QString& value)
{
    const qsizetype equals = value.indexOf(u'=');
    if (equals <= 0 || equals == value.size() - 1) {
        throw TUserError(
            QStringLiteral("Die Option --%1 erwartet BEREICH=%2, nicht \"%3\".")
                .arg(option, option == Do ? QStringLiteral("MenuAction_NAME") : QStringLiteral("TEXT"), value));
    }
    return {.Kind = option == Do ? TBatchStep::TKind::Action : TBatchStep::TKind::Command,
            .Pane = value.left(equals),
            .Text = value.mid(equals + 1)};
}

// The parser keeps the values by option, and apart from them the names as they came: walking the names and taking one
// value for each puts the steps back in order.
QList<TBatchStep> StepsOf(const QCommandLineParser& parser)
{
    QStringList commands = parser.values(Command);
    QStringList actions = parser.values(Do);
    QList<TBatchStep> steps;
    for (const QString& name : parser.optionNames()) {
        if (name == Command)
            steps.append(StepOf(name, commands.takeFirst()));
        else if (name == Do)
            steps.append(StepOf(name, actions.takeFirst()));
    }
    return steps;
}

bool AnswerOf(const QCommandLineParser& parser)
{
    const QString answer = parser.value(Answer);
    if (parser.isSet(Answer) && answer != QStringLiteral("yes") && answer != QStringLiteral("no"))
        throw TUserError(QStringLiteral("Die Option --answer erwartet yes oder no, nicht \"%1\".").arg(answer));
    return answer == QStringLiteral("yes");
}

} // namespace

TOptions ParseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    Describe(parser);
    const bool parsed = parser.parse(arguments);
    TOptions options;
    options.Help = parser.isSet(Help);
    options.Version = parser.isSet(Version);
    if (options.Help || options.Version)
        return options;
    CheckSyntax(parser, parsed);
    CheckBatch(parser);
    options.QuitAfterPaint = parser.isSet(QuitAfterPaint);
    options.ProjectDirectory = parser.value(Project);
    options.Batch = parser.isSet(Batch);
    options.Steps = StepsOf(parser);
    options.AnswerYes = AnswerOf(parser);
    options.PictureFile = parser.value(Picture);
    return options;
}

QString HelpText()
{
    QCommandLineParser parser;
    Describe(parser);
    return parser.helpText();
}

QString VersionText()
{
    return QStringLiteral("Velmora Folders " VELMORA_VERSION);
}
