#include "tests/e2e/host_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;

TEST(Run, RunsAScriptThatCallsFunctions)
{
    const TemporaryFolder folder;
    EXPECT_EQ(runScript(folder, "print(_filename('C:/a/b')[0]); print(_parent_path(['C:/a/b']).length)"),
              (ProgramEnd{0, "b\n1\n", ""}));
}

TEST(Run, GivesTheScriptItsArguments)
{
    const TemporaryFolder folder;
    EXPECT_EQ(runScript(folder, "print(args.join('|'))", {"-x", "[1]", "--", "--json", "ä"}),
              (ProgramEnd{0, "-x|[1]|--json|ä\n", ""}));
}

TEST(Run, ReportsAnUncaughtErrorWithFileAndLine)
{
    const TemporaryFolder folder;
    const auto end = runScript(folder, "print('a');\n_filename([]);\nprint('b');\n");
    EXPECT_EQ(end, (ProgramEnd{1, "a\n",
                               "error [script/function] _filename failed: argument index out of range\n" +
                                   (folder / "script.js").string() +
                                   ":2: Error: _filename failed: argument index out of range\n"}));
}

TEST(Run, ReportsASyntaxErrorWithFileAndLine)
{
    const TemporaryFolder folder;
    const auto end = runScript(folder, "print('a');\n\nvar = 1;\n");
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.output, "");
    EXPECT_THAT(end.errors, testing::StartsWith((folder / "script.js").string() + ":3: SyntaxError: "));
}

TEST(Run, LetsAScriptCatchAFailedCall)
{
    const TemporaryFolder folder;
    const auto end = runScript(folder, "try { _filename([]) } catch (e) { print(e.message) }");
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.output, "_filename failed: argument index out of range\n");
}

TEST(Run, EndsWithTheStatusThatTheScriptGives)
{
    const TemporaryFolder folder;
    EXPECT_EQ(runScript(folder, "print(1); exit(42); print(2)"), (ProgramEnd{42, "1\n", ""}));
}

TEST(Run, RefusesAScriptThatCannotBeRead)
{
    const auto end = runHost({"run", "/not/there.js"});
    EXPECT_EQ(
        end, (ProgramEnd{2, "", "hollerwick-host: cannot read the script /not/there.js: No such file or directory\n"}));
}

TEST(Run, RefusesAScriptThatIsNotUtf8)
{
    const TemporaryFolder folder;
    const auto end = runScript(folder, "print('gr\xFC\xDF')");
    EXPECT_EQ(end,
              (ProgramEnd{2, "",
                          "hollerwick-host: the script " + (folder / "script.js").string() + " is not valid UTF-8\n"}));
}

TEST(Run, ReadsAScriptUnderAnyNameInAnyLocale)
{
    const TemporaryFolder folder;
    const auto script = folder.write("größe 日本.js", "print('ä')");
    EXPECT_EQ(runHost({"run", script.string()}), (ProgramEnd{0, "ä\n", ""}));
}

TEST(Run, NeedsNoDisplayForAScriptWithoutWindows)
{
    const TemporaryFolder folder;
    auto environment = bareEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("nonexistent"));
    const auto script = folder.write("s.js", "print(_filename('a')[0])");
    EXPECT_EQ(runHost({"run", script.string()}, environment), (ProgramEnd{0, "a\n", ""}));
}

TEST(Run, ThrowsAnErrorForAWindowWithoutADisplay)
{
    const TemporaryFolder folder;
    const auto end = runScript(folder, "try { _bundle_viewer('x') } catch (e) { print(e.message) }");
    EXPECT_EQ(end.status, 0);
    EXPECT_THAT(end.output, HasSubstr("_bundle_viewer opens a window, and there is no display"));
}

TEST(Run, PacksAndUnpacksFilesOfEverySortOfName)
{
    const TemporaryFolder folder;
    const std::vector<std::string> pieces{"a",   " ", "%", "#", "?", "+", "&", "'", "ä", "ß", "日本",     "😀",   "%41",
                                          "%2F", ";", "=", "@", "$", "!", "~", "(", ")", "[", "]",        "{",   "}",
                                          "^",   "`", "|", "<", ">", "*", ":", ",", "Z", "é", "\xCC\x88", "..x", "\""};
    std::string list = "'" + folder.write("in/first.kvsch", "first").string() + "'";
    for (std::size_t i = 0; i < 200; ++i) {
        const std::string name = "n" + std::to_string(i) + pieces[i % pieces.size()] +
                                 pieces[(i * 7 + i / pieces.size()) % pieces.size()] + "x";
        const auto path = folder.write("in/sub " + std::to_string(i % 5) + "/" + name, "bytes of " + name);
        std::string escaped;
        for (const char c : path.string())
            escaped += c == '\'' || c == '\\' ? std::string{'\\', c} : std::string{c};
        list += ",\n'" + escaped + "'";
    }
    const auto end = runScript(folder, "var files = [" + list + "];\n" + R"(
print(_create_example(files, args[0] + '/out.kvbdl.zip', 'Names')[0]);
print(_unpack_content_bundle(args[0] + '/out.kvbdl.zip', args[0] + '/out')[0]);
var type = 'http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content';
print(_content_bundle_targets(type, args[0] + '/out.kvbdl.zip').length);
)",
                               {folder.path().string()});
    EXPECT_EQ(end, (ProgramEnd{0, "OK\nOK\n201\n", ""}));
    EXPECT_EQ(filesBelow(folder / "out/content"), filesBelow(folder / "in"));
}
