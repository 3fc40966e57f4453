#include "fuzz/fuzzing.h"
#include "fuzz/scratch_directory.h"
#include "host/shell/host_application.h"
#include "host/shell/log_output.h"
#include "host/shell/plugin_library.h"
#include "host/shell/script_runner.h"
#include "host/support/function_registry.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int mostCalls = 12;
constexpr int mostArguments = 7;

/// The bytes of an input as choices; zeros when they have run out.
class Choices
{
public:
    explicit Choices(std::string_view bytes) : m_bytes{bytes} {}

    bool isAtEnd() const { return m_bytes.empty(); }

    std::size_t below(std::size_t count)
    {
        if (m_bytes.empty())
            return 0;
        const auto byte = static_cast<unsigned char>(m_bytes.front());
        m_bytes.remove_prefix(1);
        return byte % count;
    }

    /// A text of its own, without what would make it the path of a file that is not below the working directory.
    std::string text()
    {
        const std::size_t wanted = below(48); // which takes a byte itself
        const std::size_t length = std::min(wanted, m_bytes.size());
        std::string text{m_bytes.substr(0, length)};
        m_bytes.remove_prefix(length);
        for (char& character : text)
            character = character == '/' || character == '\\' || character == ':' ? '_' : character;
        return text == ".." ? "." : text;
    }

private:
    std::string_view m_bytes;
};

/// Comes back to the working directory, which the fuzzer's own relative paths begin at.
class WorkingDirectory
{
public:
    WorkingDirectory() : m_path{fs::current_path()} {}
    ~WorkingDirectory() { fs::current_path(m_path); }

    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    fs::path m_path;
};

/// A host with the plug-in, and the files that calls are given.
class Host
{
public:
    Host() : m_application{connect(m_scratch)}
    {
        HostShell::startLog(HostShell::LogThreshold::off);
        auto plugin = HostShell::PluginLibrary::load(QStringLiteral(HOLLERWICK_MODULE));
        Fuzzing::require(plugin.hasValue(), "the plug-in can be loaded");
        m_plugin = std::move(*plugin);
        // whatever waits for a user is closed
        QObject::connect(&m_closer, &QTimer::timeout, [] {
            if (QWidget* const waiting = QApplication::activeModalWidget())
                waiting->close();
            else if (QWidget* const popup = QApplication::activePopupWidget())
                popup->close();
        });
        m_closer.start(0);
    }

    void run(Choices choices)
    {
        const WorkingDirectory kept;
        prepare();
        const auto outside = contentsOf(m_scratch / "kept");
        HostShell::ScriptRunner runner{[](const QString&) {}};
        runner.run(script(choices), QStringLiteral("fuzz.js"), {});
        QCoreApplication::processEvents();
        for (QWidget* window : QApplication::topLevelWidgets())
            window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        Fuzzing::require(contentsOf(m_scratch / "kept") == outside, "no call changes a file that it only reads");
    }

private:
    static std::unique_ptr<HostShell::HostApplication> connect(const ScratchDirectory& scratch)
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        // dialogs remember what they were last asked in the user's own directory
        qputenv("HOME", QByteArray::fromStdString((scratch / "home").string()));
        return HostShell::HostApplication::connect();
    }

    /// Files that calls read stand in "kept", what they write is in "work", which is the working directory too.
    void prepare()
    {
        if (!fs::exists(m_scratch / "kept"))
            makeFiles();
        fs::current_path(m_scratch.path());
        fs::remove_all(m_scratch / "work");
        fs::create_directories(m_scratch / "work");
        fs::current_path(m_scratch / "work");
        qputenv("TMPDIR", QByteArray::fromStdString((m_scratch / "work").string()));
    }

    void makeFiles()
    {
        const std::string design = m_scratch.write("kept/design/top.kvsch", "top").string();
        const std::string page = m_scratch.write("kept/design/documentation.html", "<p>page</p>").string();
        const std::string child = m_scratch.write("kept/design/sub/child.kvsch", "child").string();
        const std::string example = (m_scratch / "kept/example.kvbdl.zip").string();
        const std::string barrel = (m_scratch / "kept/barrel.kvexs").string();
        m_texts = {"",
                   "title",
                   "key; word",
                   "\u00fc\u65e5\u202e",
                   "[",
                   "1",
                   design,
                   page,
                   child,
                   example,
                   barrel,
                   (m_scratch / "kept").string(),
                   (m_scratch / "kept/design").string(),
                   m_scratch.write("kept/broken.zip", "PK\5\6 no archive").string(),
                   (m_scratch / "kept/not there.zip").string(),
                   (m_scratch / "work/out.zip").string(),
                   (m_scratch / "work/new").string(),
                   (m_scratch / "work").string(),
                   std::string(300, 'n'),
                   "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content"};
        HostShell::ScriptRunner runner{[](const QString&) {}};
        const auto list = [](std::initializer_list<std::string> texts) { return quoted({texts}); };
        const std::string make = "_create_example(" + list({design, page, child}) + ", " + list({example}) + ", " +
                                 list({"T"}) + "); _create_examples(" + list({example}) + ", " + list({barrel}) + ");";
        const auto end = runner.run(QString::fromStdString(make), QStringLiteral("make.js"), {});
        Fuzzing::require(end.status == 0 && fs::exists(barrel), "examples and a barrel can be made");
    }

    static std::string quoted(const std::vector<std::string>& texts)
    {
        QJsonArray array;
        for (const std::string& text : texts)
            array.append(QString::fromStdString(text));
        return QJsonDocument{array}.toJson(QJsonDocument::Compact).toStdString();
    }

    QString script(Choices& choices) const
    {
        std::string text = "var last = [''];\n";
        for (int call = 0; call < mostCalls && !choices.isAtEnd(); ++call)
            text += "try { last = " + nextCall(choices) + "; } catch (error) { }\n";
        return QString::fromStdString(text);
    }

    std::string nextCall(Choices& choices) const
    {
        const auto& functions = Kelvaris::FunctionRegistry::instance().functions();
        const Kelvaris::RegisteredFunction& function = functions[choices.below(functions.size())];
        std::string call = function.name + "(";
        const std::size_t count = argumentCount(function, choices);
        for (std::size_t i = 0; i < count; ++i)
            call += (i == 0 ? "" : ", ") + (i == outputOf(function.name) ? output(choices) : argument(choices));
        return call + ")";
    }

    /// The argument that tells where a function writes; whatever stands there may be replaced.
    static std::size_t outputOf(const std::string& function)
    {
        constexpr std::string_view writers[] = {"_create_example", "_create_examples", "_unpack_content_bundle",
                                                "_schematic_bundle_write", "_example_browser_2"};
        return std::ranges::count(writers, function) == 0 ? mostArguments : 1;
    }

    std::string output(Choices& choices) const
    {
        const std::string paths[] = {(m_scratch / "work/out.zip").string(), (m_scratch / "work/new").string(),
                                     (m_scratch / "work").string(), choices.text()};
        return quoted({paths[choices.below(std::size(paths))]});
    }

    /// Most often one that the function takes: what it does not take is refused before it is called.
    static std::size_t argumentCount(const Kelvaris::RegisteredFunction& function, Choices& choices)
    {
        if (choices.below(16) == 0)
            return choices.below(mostArguments + 1);
        const auto least = static_cast<std::size_t>(function.minimum);
        return least + choices.below(static_cast<std::size_t>(function.maximum - function.minimum) + 1);
    }

    /// What the call before has given, or some texts.
    std::string argument(Choices& choices) const
    {
        if (choices.below(4) == 0)
            return "last";
        std::vector<std::string> texts;
        constexpr std::size_t counts[] = {1, 1, 1, 1, 1, 2, 3, 0};
        for (std::size_t i = counts[choices.below(std::size(counts))]; i > 0; --i) {
            const std::size_t choice = choices.below(m_texts.size() + 2);
            texts.push_back(choice < m_texts.size() ? m_texts[choice] : choices.text());
        }
        return quoted(texts);
    }

    ScratchDirectory m_scratch;
    std::vector<std::string> m_texts;
    std::unique_ptr<HostShell::HostApplication> m_application;
    std::unique_ptr<HostShell::PluginLibrary> m_plugin;
    QTimer m_closer;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // as long as the process: objects of the plug-in must not outlive it, whatever is torn down at the end
    static Host* const host = new Host;
    host->run(Choices{Fuzzing::textOf(data, size)});
    return 0;
}
