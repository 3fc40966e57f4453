#include "tests/e2e/host_program.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string designs = std::string{SAMPLES_DIRECTORY} + "/designs/";

QJsonObject jsonOf(const ProgramEnd& end)
{
    QJsonParseError error;
    const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(end.output), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << end;
    EXPECT_EQ(document.object()[QStringLiteral("status")].toInt(-1), end.status) << end;
    return document.object();
}

std::string text(const QJsonObject& object, const char* name)
{
    return object[QString::fromLatin1(name)].toString().toStdString();
}

/// A folder with an example and a barrel of two, made by the verbs.
class Verbs : public testing::Test
{
protected:
    Verbs()
    {
        const auto packed = runHost({"pack", designs + "rc_lowpass", "--title", "RC low-pass", "--description",
                                     "First order", "--manufacturer", "Acme", "--keyword", "filter", "--keyword",
                                     "passive", "--output", file("rc.kvbdl.zip")});
        EXPECT_EQ(packed, (ProgramEnd{0, file("rc.kvbdl.zip") + "\n", ""}));
        EXPECT_EQ(runHost({"pack", designs + "lc_lowpass/lc_lowpass.kvsch", "--output", file("lc.kvbdl.zip")}).status,
                  0);
        const auto barrel =
            runHost({"barrel", file("rc.kvbdl.zip"), file("lc.kvbdl.zip"), "--output", file("two.kvexs")});
        EXPECT_EQ(barrel, (ProgramEnd{0, file("two.kvexs") + "\n", ""}));
    }

    std::string file(const std::string& name) const { return (m_folder / name).string(); }
    const TemporaryFolder& folder() const { return m_folder; }

    /// Every file and directory below the folder.
    std::vector<std::string> everything() const
    {
        std::vector<std::string> paths;
        for (const auto& entry : fs::recursive_directory_iterator{m_folder.path()})
            paths.push_back(entry.path().string());
        std::ranges::sort(paths);
        return paths;
    }

private:
    TemporaryFolder m_folder;
};

} // namespace

TEST_F(Verbs, ShowWhatABundleHolds)
{
    const auto end = runHost({"info", file("rc.kvbdl.zip")});
    EXPECT_EQ(end.status, 0);
    EXPECT_EQ(end.errors, "");
    EXPECT_THAT(end.output, StartsWith(file("rc.kvbdl.zip") + ": an example bundle\n"
                                                              "title         RC low-pass\n"
                                                              "description   First order\n"
                                                              "manufacturer  Acme\n"
                                                              "keywords      filter, passive\n"
                                                              "primary file  /content/rc_lowpass.kvsch\n"
                                                              "parts\n"));
    EXPECT_THAT(end.output, HasSubstr("  /content/documentation.html  text/html\n"));
    EXPECT_THAT(end.output, HasSubstr("relationships\n  /  "));
}

TEST_F(Verbs, ShowItAsOneLineOfJson)
{
    const auto end = runHost({"info", "--json", file("rc.kvbdl.zip")});
    const QJsonObject info = jsonOf(end);
    EXPECT_EQ(std::ranges::count(end.output, '\n'), 1);
    EXPECT_EQ(text(info, "kind"), "example");
    EXPECT_EQ(text(info, "primaryFile"), "/content/rc_lowpass.kvsch");
    EXPECT_EQ(info[QStringLiteral("keywords")].toArray().size(), 2);
    EXPECT_FALSE(info[QStringLiteral("entries")].toArray().isEmpty());
    EXPECT_FALSE(info[QStringLiteral("relationships")].toArray().isEmpty());
}

TEST_F(Verbs, ListTheExamplesOfABarrel)
{
    EXPECT_EQ(runHost({"list", file("two.kvexs")}),
              (ProgramEnd{0,
                          "/examples/rc.kvbdl.zip  RC low-pass  [filter, passive]\n"
                          "/examples/lc.kvbdl.zip  lc_lowpass\n",
                          ""}));
    const QJsonObject list = jsonOf(runHost({"list", file("two.kvexs"), "--json"}));
    const QJsonObject barrel = list[QStringLiteral("barrels")].toArray()[0].toObject();
    EXPECT_EQ(text(barrel, "file"), file("two.kvexs"));
    EXPECT_EQ(text(barrel[QStringLiteral("examples")].toArray()[0].toObject(), "manufacturer"), "Acme");
}

TEST_F(Verbs, ListWhatTheyCanWhenOneOfTheFilesIsNoBarrel)
{
    const auto end = runHost({"list", file("rc.kvbdl.zip"), file("two.kvexs")});
    EXPECT_EQ(end.status, 3);
    EXPECT_THAT(end.errors, HasSubstr("the file is a bundle of another kind: a barrel of examples was expected, this "
                                      "is an example bundle; choose a bundle of the kind that is wanted"));
    EXPECT_THAT(end.output, HasSubstr("RC low-pass"));
}

TEST_F(Verbs, FindNoFaultInWhatTheyMake)
{
    for (const char* name : {"rc.kvbdl.zip", "two.kvexs"})
        EXPECT_EQ(runHost({"check", file(name)}), (ProgramEnd{0, file(name) + ": no faults\n", ""}));
}

TEST_F(Verbs, TellEveryFaultOfAFileAndHowToMendIt)
{
    const std::string broken = BROKEN_PACKAGES "/rel-duplicate-id.zip";
    ASSERT_TRUE(fs::exists(broken));
    const auto end = runHost({"check", broken});
    EXPECT_EQ(end.status, 5);
    EXPECT_THAT(end.output,
                HasSubstr("fault   " + broken + ": /_rels/.rels: two relationships have the same identifier: "));
    EXPECT_THAT(end.output, HasSubstr("\n  mend  give one of the two another Id\n"));
    const QJsonObject check = jsonOf(runHost({"check", broken, "--json"}));
    const QJsonObject fault =
        check[QStringLiteral("files")].toArray()[0].toObject()[QStringLiteral("faults")].toArray()[0].toObject();
    EXPECT_EQ(text(fault, "where"), broken + ": /_rels/.rels");
    EXPECT_EQ(text(fault, "what"), "two relationships have the same identifier");
    EXPECT_THAT(text(fault, "why"), HasSubstr("M1.26"));
    EXPECT_EQ(text(fault, "category"), "opc");
    EXPECT_EQ(fault[QStringLiteral("code")].toInt(), 18);
}

TEST_F(Verbs, CheckAllOfManyFilesAndAnswerTheWorst)
{
    const std::string broken = BROKEN_PACKAGES "/rel-duplicate-id.zip";
    const std::string none = file("none.zip");
    const auto end = runHost({"check", file("rc.kvbdl.zip"), none, broken, "--json"});
    EXPECT_EQ(end.status, 3);
    EXPECT_EQ(end.errors,
              "hollerwick-host: " + none + ": cannot be opened: No such file or directory; check the path\n");
    EXPECT_EQ(jsonOf(end)[QStringLiteral("files")].toArray().size(), 3);
    EXPECT_EQ(runHost({"check", file("rc.kvbdl.zip"), broken}).status, 5);
}

TEST_F(Verbs, AgreeWithTheVerdictOnEveryBrokenPackage)
{
    std::map<std::string, std::string> verdicts;
    std::ifstream index{BROKEN_PACKAGES "/INDEX.tsv"};
    std::vector<std::string> words{"check", "--json"};
    std::string line;
    std::getline(index, line);
    while (std::getline(index, line)) {
        const std::size_t tab = line.find('\t');
        const std::string path = BROKEN_PACKAGES "/" + line.substr(0, tab);
        words.push_back(path);
        verdicts[path] = line.substr(tab + 1, line.find('\t', tab + 1) - tab - 1);
    }
    const QJsonArray files = jsonOf(runHost(words))[QStringLiteral("files")].toArray();
    ASSERT_EQ(files.size(), static_cast<int>(verdicts.size()));
    for (const QJsonValue value : files) {
        const QJsonObject checked = value.toObject();
        const std::string verdict = verdicts[text(checked, "file")];
        const bool mayOpen = verdict.find("ok") != std::string::npos || verdict.find("warn") != std::string::npos;
        const QJsonArray faults = checked[QStringLiteral("faults")].toArray();
        const QJsonObject error = checked[QStringLiteral("error")].toObject();
        if (mayOpen && verdict.find_first_of("0123456789") == std::string::npos) {
            EXPECT_TRUE(error.isEmpty()) << text(checked, "file");
            // what every package may do, a bundle may not: names that cannot be unpacked
            for (const QJsonValue fault : faults)
                EXPECT_THAT(text(fault.toObject(), "what"), testing::Not(testing::IsEmpty()));
        }
        if (!mayOpen) {
            const bool isRefused = !faults.isEmpty() || !error.isEmpty();
            EXPECT_TRUE(isRefused) << text(checked, "file") << " passes, and must not: " << verdict;
        }
    }
}

TEST_F(Verbs, ExtractABundleIntoADirectoryOfItsName)
{
    const auto end = runProgram(QStringLiteral("/bin/sh"), {"-c", "cd \"$1\" && exec \"$0\" extract rc.kvbdl.zip",
                                                            HOLLERWICK_HOST, folder().path().string()});
    EXPECT_EQ(end.status, 0) << end;
    EXPECT_THAT(end.output, StartsWith("rc/content/rc_lowpass.kvsch\n"));
    EXPECT_EQ(readFile(folder() / "rc/content/rc_lowpass.kvsch"), readFile(designs + "rc_lowpass/rc_lowpass.kvsch"));
}

TEST_F(Verbs, ExtractOneExampleOfABarrelByTitleOrPart)
{
    for (const char* name : {"RC low-pass", "/examples/rc.kvbdl.zip", "rc.kvbdl.zip"}) {
        const std::string directory = file(std::string{"out "} + fs::path{name}.filename().string() + name[0]);
        EXPECT_EQ(runHost({"extract", file("two.kvexs"), "--example", name, "--output", directory}).status, 0) << name;
        EXPECT_TRUE(fs::exists(fs::path{directory} / "content/rc_lowpass.kvsch")) << name;
    }
}

TEST_F(Verbs, AskForTheExampleOfABarrel)
{
    EXPECT_EQ(runHost({"extract", file("two.kvexs")}),
              (ProgramEnd{2, "",
                          "hollerwick-host: " + file("two.kvexs") +
                              ": is a barrel of examples: choose one with --example; \"hollerwick-host list\" shows "
                              "their names\n"}));
    EXPECT_EQ(runHost({"extract", file("two.kvexs"), "--example", "none"}).status, 3);
}

TEST_F(Verbs, LeaveAnOutputThatExists)
{
    const auto before = everything();
    const auto packed = runHost({"pack", designs + "rc_lowpass", "--output", file("rc.kvbdl.zip")});
    EXPECT_EQ(packed, (ProgramEnd{4, "",
                                  "hollerwick-host: " + file("rc.kvbdl.zip") +
                                      ": exists already; choose another --output, or replace it with --force\n"}));
    EXPECT_EQ(runHost({"barrel", file("rc.kvbdl.zip"), "--output", file("two.kvexs")}).status, 4);
    ASSERT_EQ(runHost({"extract", file("rc.kvbdl.zip"), "--output", file("out")}).status, 0);
    const auto extracted = runHost({"extract", file("rc.kvbdl.zip"), "--output", file("out"), "--json"});
    EXPECT_EQ(extracted.status, 4);
    EXPECT_EQ(jsonOf(extracted)[QStringLiteral("error")].toObject()[QStringLiteral("code")].toInt(), 25);
    fs::remove_all(file("out"));
    EXPECT_EQ(everything(), before);
}

TEST_F(Verbs, ReplaceAnOutputWhenForced)
{
    EXPECT_EQ(runHost({"pack", designs + "rc_lowpass", "--title", "Other", "--output", file("rc.kvbdl.zip"), "--force"})
                  .status,
              0);
    EXPECT_THAT(runHost({"info", file("rc.kvbdl.zip")}).output, HasSubstr("title         Other\n"));
}

TEST_F(Verbs, WriteNothingInADryRunAndTellWhatTheyWouldWrite)
{
    const auto before = everything();
    const auto packed =
        runHost({"pack", designs + "rc_lowpass", "--output", file("new.kvbdl.zip"), "--dry-run", "--json"});
    const auto barrel = runHost({"barrel", folder().path().string(), "--output", file("new.kvexs"), "--dry-run"});
    const auto extracted = runHost({"extract", file("rc.kvbdl.zip"), "--output", file("new"), "--dry-run"});
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(barrel.output, "/examples/lc.kvbdl.zip  " + file("lc.kvbdl.zip") + "\n/examples/rc.kvbdl.zip  " +
                                 file("rc.kvbdl.zip") + "\n" + file("new.kvexs") + "\n");
    EXPECT_THAT(extracted.output, StartsWith(file("new") + "/content/rc_lowpass.kvsch\n"));
    std::set<std::string> planned;
    for (const QJsonValue part : jsonOf(packed)[QStringLiteral("parts")].toArray())
        planned.insert(text(part.toObject(), "part"));
    std::set<std::string> made;
    for (const QJsonValue entry :
         jsonOf(runHost({"info", file("rc.kvbdl.zip"), "--json"}))[QStringLiteral("entries")].toArray()) {
        if (text(entry.toObject(), "part").starts_with("/content/"))
            made.insert(text(entry.toObject(), "part"));
    }
    EXPECT_EQ(planned, made);
}

TEST_F(Verbs, PackTheSameBundleAsTheFunction)
{
    ASSERT_EQ(runHost({"call", "_create_example", designs + "lc_lowpass/lc_lowpass.kvsch", file("called.kvbdl.zip"),
                       "lc_lowpass", "", "", "[]"})
                  .output,
              "OK\n");
    EXPECT_EQ(readFile(file("called.kvbdl.zip")), readFile(file("lc.kvbdl.zip")));
}

TEST_F(Verbs, AnswerThreeForAnInputThatIsMissingOrOfAnotherKind)
{
    EXPECT_EQ(runHost({"info", file("none")}).status, 3);
    EXPECT_EQ(runHost({"info", designs + "rc_lowpass/rc_lowpass.kvsch"}).status, 3);
    EXPECT_EQ(runHost({"list", file("none")}).status, 3);
    EXPECT_EQ(runHost({"extract", file("none")}).status, 3);
    EXPECT_EQ(runHost({"pack", file("none")}).status, 3);
    EXPECT_EQ(runHost({"barrel", designs + "rc_lowpass/rc_lowpass.kvsch", "--output", file("x")}).status, 3);
    EXPECT_EQ(runHost({"check", folder().path().string()}).status, 3);
}

TEST_F(Verbs, AnswerOneWhenTheOutputCannotBeWritten)
{
    const std::string blocked = folder().write("plain", "x").string() + "/below";
    const auto end = runHost({"pack", designs + "rc_lowpass", "--output", blocked, "--json"});
    EXPECT_EQ(end.status, 1) << end;
    EXPECT_THAT(end.errors, HasSubstr(blocked + ": cannot be written: Not a directory; check the path"));
    EXPECT_THAT(text(jsonOf(end)[QStringLiteral("error")].toObject(), "message"), HasSubstr("cannot be written"));
    EXPECT_EQ(runHost({"extract", file("rc.kvbdl.zip"), "--output", blocked}).status, 1);
}

TEST_F(Verbs, SayTheSameSentenceAsTheScriptAndTheLog)
{
    const std::string blocked = folder().write("plain", "x").string() + "/below";
    const std::string sentence = blocked + ": cannot be written: Not a directory; check the path: a file stands where "
                                           "it names a directory";
    EXPECT_EQ(runHost({"pack", designs + "rc_lowpass/rc_lowpass.kvsch", "--output", blocked}).errors,
              "hollerwick-host: " + sentence + "\n");
    EXPECT_EQ(runHost({"call", "_create_example", designs + "rc_lowpass/rc_lowpass.kvsch", blocked, "x"}).output,
              "FAILED: " + sentence + "\n");
    const std::string noBarrel = file("rc.kvbdl.zip") +
                                 ": the file is a bundle of another kind: a barrel of examples was "
                                 "expected, this is an example bundle; choose a bundle of the "
                                 "kind that is wanted";
    EXPECT_EQ(runHost({"list", file("rc.kvbdl.zip")}).errors, "hollerwick-host: " + noBarrel + "\n");
    const auto unpacked = runHost({"extract", file("plain")}).errors;
    const auto logged = runHost({"call", "_unpack_content_bundle", file("plain"), file("new")}).errors;
    EXPECT_EQ(logged.substr(logged.find(file("plain"))), unpacked.substr(unpacked.find(file("plain"))));
}

TEST_F(Verbs, LeaveThePackedBundleOutOfTheNextOne)
{
    folder().write("design/a.kvsch", "x");
    const auto pack = [&] {
        return runProgram(QStringLiteral("/bin/sh"),
                          {"-c", "cd \"$1\" && exec \"$0\" pack . --force --dry-run", HOLLERWICK_HOST, file("design")});
    };
    const auto first = pack();
    EXPECT_EQ(first.output, "/content/a.kvsch  ./a.kvsch\na.kvbdl.zip\n") << first;
    folder().write("design/a.kvbdl.zip", "an old one");
    EXPECT_EQ(pack(), first);
}

TEST_F(Verbs, AnswerTwoForAWrongCommandLineInJsonToo)
{
    const auto end = runHost({"check", "--json"});
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(text(jsonOf(end)[QStringLiteral("error")].toObject(), "message"), "FILE is required: check FILE...");
    EXPECT_EQ(runHost({"call", "_nothing", "--json"}).status, 2);
}

TEST_F(Verbs, PackALongListOfFiles)
{
    constexpr int count = 2000;
    std::vector<std::string> words{"pack"};
    for (int i = 0; i < count; ++i)
        words.push_back(folder().write("many/" + std::to_string(i) + ".va", "x").string());
    words.insert(words.end(), {"--output", file("many.kvbdl.zip"), "--json"});
    const auto end = runHost(words);
    EXPECT_EQ(end.status, 0) << end.errors;
    EXPECT_EQ(jsonOf(end)[QStringLiteral("parts")].toArray().size(), count);
}

TEST_F(Verbs, EndQuietlyWhenNobodyReadsOn)
{
    const auto end = runProgram(QStringLiteral("/bin/sh"), {"-c", "\"$0\" check \"$1\" \"$1\" \"$1\" | head -n 1",
                                                            HOLLERWICK_HOST, file("rc.kvbdl.zip")});
    EXPECT_EQ(end, (ProgramEnd{0, file("rc.kvbdl.zip") + ": no faults\n", ""}));
}

TEST_F(Verbs, TellWhenStandardOutputIsFull)
{
    if (!fs::exists("/dev/full"))
        GTEST_SKIP() << "no /dev/full";
    const auto end = runProgram(QStringLiteral("/bin/sh"),
                                {"-c", "exec \"$0\" info \"$1\" >/dev/full", HOLLERWICK_HOST, file("rc.kvbdl.zip")});
    EXPECT_EQ(end.status, 1);
    EXPECT_EQ(end.errors, "hollerwick-host: cannot write to standard output: No space left on device\n");
}

TEST_F(Verbs, RefuseAFileNameThatIsNotUtf8)
{
    const auto end = runProgram(QStringLiteral("/bin/sh"),
                                {"-c", "exec \"$0\" check \"$(printf 'a\\377')\" --json", HOLLERWICK_HOST});
    EXPECT_EQ(end.status, 2);
    EXPECT_EQ(end.errors, "hollerwick-host: word 2 of the command line is not valid UTF-8\n");
    jsonOf(end);
}

TEST_F(Verbs, ShowNoControlCharactersOfAFile)
{
    const auto script = folder().write("escape.kvsch", "x").string();
    ASSERT_EQ(runHost({"pack", script, "--title", "a\tb", "--output", file("tab.kvbdl.zip")}).status, 0);
    EXPECT_THAT(runHost({"info", file("tab.kvbdl.zip")}).output, HasSubstr("title         a\\x09b\n"));
}
