#include "Cli/CommandLine.h"

#include "Base/Version.h"
#include "Cli/CliPrompt.h"
#include "Cli/Command.h"
#include "Model/Enumerations.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTranslator>

#include <algorithm>
#include <array>
#include <cstdio>
#include <vector>

namespace ChipLoom {

namespace {

constexpr std::array<CommandOption, 6> GlobalOptions{{
    {"database", "DIR",
     QT_TRANSLATE_NOOP("Cli", "Read the device database in DIR. Without it: the folder ZV32DB beside the program.")},
    {"language", "en|zh", QT_TRANSLATE_NOOP("Cli", "Language of messages and of database texts. Without it: English.")},
    {"json", nullptr, QT_TRANSLATE_NOOP("Cli", "Write the result as JSON.")},
    {"yes", nullptr,
     QT_TRANSLATE_NOOP("Cli", "Answer questions by going on. Without it: by their default, with exit code 1.")},
    {"help", nullptr, QT_TRANSLATE_NOOP("Cli", "Show this help, or that of the command, and exit.")},
    {"version", nullptr, QT_TRANSLATE_NOOP("Cli", "Show the version and exit.")},
}};

QString translated(const char *text)
{
    return *text == '\0' ? QString() : QCoreApplication::translate("Cli", text);
}

const Command *findCommand(const QString &name)
{
    const auto all = commands();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Command *command) { return name == QLatin1String(command->name); });
    return found == all.end() ? nullptr : *found;
}

void declare(QCommandLineParser &parser, std::span<const CommandOption> options)
{
    for (const CommandOption &option : options) {
        QStringList names{QLatin1String(option.name)};
        if (names.first() == QLatin1String("help"))
            names.prepend(QStringLiteral("h"));
        parser.addOption({names, QString(), QLatin1String(option.value ? option.value : "")});
    }
}

void writeOptions(QTextStream &out, std::span<const CommandOption> options)
{
    for (const CommandOption &option : options) {
        const QString name = QLatin1String(option.name);
        QString usage = QLatin1String(name.size() == 1 ? "-" : "--") + name;
        if (option.value)
            usage += QLatin1Char(' ') + QLatin1String(option.value);
        out << "  " << usage.leftJustified(18) << "  " << translated(option.help) << '\n';
    }
}

void writeHelp(QTextStream &out, const Command *command)
{
    if (command) {
        out << translated(QT_TRANSLATE_NOOP("Cli", "Usage:")) << " chiploom-cli [OPTIONS] " << command->name;
        if (*command->arguments != '\0')
            out << ' ' << command->arguments;
        out << "\n\n" << translated(command->summary) << '\n';
        if (*command->details != '\0')
            out << translated(command->details) << '\n';
    } else {
        out << translated(QT_TRANSLATE_NOOP("Cli", "Usage:")) << " chiploom-cli [OPTIONS] COMMAND [ARGUMENTS]\n\n"
            << translated(QT_TRANSLATE_NOOP("Cli", "Chip Loom without a window, for ZV32 devices.")) << "\n\n"
            << translated(QT_TRANSLATE_NOOP("Cli", "Commands:")) << '\n';
        for (const Command *listed : commands())
            out << "  " << QString::fromLatin1(listed->name).leftJustified(18) << "  " << translated(listed->summary)
                << '\n';
    }
    if (command && !command->options.empty()) {
        out << '\n' << translated(QT_TRANSLATE_NOOP("Cli", "Options of the command:")) << '\n';
        writeOptions(out, command->options);
    }
    out << '\n' << translated(QT_TRANSLATE_NOOP("Cli", "Options:")) << '\n';
    writeOptions(out, GlobalOptions);
    out << '\n'
        << translated(QT_TRANSLATE_NOOP("Cli", "Exit codes: 0 success, 1 the design or the data has a problem, 2 wrong "
                                               "usage, 3 a file cannot be read or written."))
        << '\n';
}

/// One run of the program.
class Run
{
public:
    Run(const QStringList &arguments, AppPaths paths)
        : m_arguments(arguments), m_paths(std::move(paths)), m_out(stdout), m_err(stderr)
    {
        m_out.setCodec("UTF-8");
        m_err.setCodec("UTF-8");
    }

    int run()
    {
        ExitCode code = understand();
        m_out.flush();
        if (m_out.status() != QTextStream::Ok || std::fflush(stdout) != 0) {
            tell(translated(QT_TRANSLATE_NOOP("Cli", "The result cannot be written to standard output.")));
            code = ExitCode::FileError;
        }
        m_err.flush();
        return static_cast<int>(code);
    }

private:
    ExitCode understand()
    {
        // The options in front tell which command it is, and the command tells its options.
        QCommandLineParser parser;
        declare(parser, GlobalOptions);
        parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
        const bool understood = parser.parse(m_arguments);
        if (!chooseLanguage(parser))
            return ExitCode::WrongUsage;
        // A file of another name would be read or made.
        for (const QString &argument : qAsConst(m_arguments)) {
            if (argument.contains(QChar(QChar::ReplacementCharacter)))
                return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "\"%1\" is not in the encoding of the system; "
                                                                      "rename the file."))
                                      .arg(argument));
        }
        if (!understood)
            return wrongUsage(parser.errorText());
        const QString name = parser.positionalArguments().value(0);
        const Command *command = findCommand(name);
        if (!command && !name.isEmpty())
            return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "There is no command \"%1\".")).arg(name));
        if (command)
            return understand(*command);
        if (parser.isSet(QStringLiteral("help")))
            writeHelp(m_out, nullptr);
        else if (parser.isSet(QStringLiteral("version")))
            m_out << "chiploom-cli " << ProgramVersion << '\n';
        else
            return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "No command was given.")));
        return ExitCode::Success;
    }

    ExitCode understand(const Command &command)
    {
        QCommandLineParser parser;
        declare(parser, GlobalOptions);
        declare(parser, command.options);
        const bool understood = parser.parse(m_arguments);
        if (!chooseLanguage(parser))
            return ExitCode::WrongUsage;
        if (!understood)
            return wrongUsage(parser.errorText());
        if (parser.isSet(QStringLiteral("help"))) {
            writeHelp(m_out, &command);
            return ExitCode::Success;
        }
        if (parser.isSet(QStringLiteral("version"))) {
            m_out << "chiploom-cli " << ProgramVersion << '\n';
            return ExitCode::Success;
        }
        const QStringList arguments = parser.positionalArguments().mid(1);
        if (arguments.size() < command.minArguments || arguments.size() > command.maxArguments) {
            if (command.maxArguments == 0)
                return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "\"%1\" takes no arguments."))
                                      .arg(QLatin1String(command.name)));
            return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "\"%1\" takes these arguments: %2"))
                                  .arg(QLatin1String(command.name), QLatin1String(command.arguments)));
        }
        return execute(command, parser, arguments);
    }

    ExitCode execute(const Command &command, const QCommandLineParser &parser, const QStringList &arguments)
    {
        if (parser.isSet(QStringLiteral("database"))) {
            // As from a script whose variable is not set.
            if (parser.value(QStringLiteral("database")).isEmpty())
                return wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "--database names no folder.")));
            m_paths.setDatabaseDir(parser.value(QStringLiteral("database")));
        }
        CliPrompt prompt(m_err, parser.isSet(QStringLiteral("yes")));
        CommandContext context{m_paths, prompt, m_out, m_err, parser.isSet(QStringLiteral("json")), arguments, {}};
        for (const CommandOption &option : command.options) {
            if (parser.isSet(QLatin1String(option.name)))
                context.given.insert(QLatin1String(option.name), parser.value(QLatin1String(option.name)));
        }
        const ExitCode code = command.run(context);
        return code == ExitCode::Success && prompt.leftQuestions() ? ExitCode::Problem : code;
    }

    /// Chooses the language before anything is said. False, with a message, for an unknown one.
    bool chooseLanguage(const QCommandLineParser &parser)
    {
        const QString language = parser.value(QStringLiteral("language"));
        if (!parser.isSet(QStringLiteral("language")) || language == QLatin1String("en")) {
            useLanguage(UI_EN, QStringLiteral(":/image/tr_en.qm"));
            return true;
        }
        if (language != QLatin1String("zh")) {
            wrongUsage(translated(QT_TRANSLATE_NOOP("Cli", "\"%1\" is no language; give en or zh.")).arg(language));
            return false;
        }
        useLanguage(UI_CH, QStringLiteral(":/image/tr_zh.qm"));
        return true;
    }

    void useLanguage(LANGUAGE language, const QString &file)
    {
        GlobalLanguage::g_CurrentLanguage = language;
        if (m_translator.load(file))
            QCoreApplication::installTranslator(&m_translator);
    }

    ExitCode wrongUsage(const QString &message)
    {
        tell(message);
        m_err << translated(QT_TRANSLATE_NOOP("Cli", "\"chiploom-cli --help\" tells what there is.")) << '\n';
        return ExitCode::WrongUsage;
    }

    void tell(const QString &message) { m_err << "chiploom-cli: " << message << '\n'; }

    QStringList m_arguments;
    AppPaths m_paths;
    QTextStream m_out;
    QTextStream m_err;
    QTranslator m_translator;
};

} // namespace

int runCommandLine(const QStringList &arguments, AppPaths paths)
{
    return Run(arguments, std::move(paths)).run();
}

} // namespace ChipLoom
