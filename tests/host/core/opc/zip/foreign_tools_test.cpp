#include "host/core/opc/zip/archive_writer.h"

#include "host/core/opc/zip/payload_store.h"
#include "tests/host/core/opc/zip/zip_testing.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;
using Zip::Effort;
namespace fs = std::filesystem;

namespace {

bool succeeds(const std::string& command)
{
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0; // NOLINT(cert-env33-c)
}

std::string quoted(const fs::path& path)
{
    return "'" + path.string() + "'";
}

/// An archive with all that the writer can do: both methods, small and large, names beyond ASCII, many entries.
fs::path writeArchive(const TemporaryFolder& folder)
{
    Zip::PayloadStore store;
    auto file = Disk::ReplacementFile::create(filePath(folder / "ours ü.zip")).value();
    Zip::ArchiveWriter writer{file};
    const auto add = [&](std::string_view name, const std::string& bytes, Effort effort) {
        writer.add(name, *store.take(bytesOf(bytes), effort).value()).value();
    };
    add("[Content_Types].xml", "<Types/>", Effort::normal);
    add("content/größe 日本.txt", std::string(10'000, 'x'), Effort::maximum);
    add("content/noise", noise(100'000), Effort::normal);
    add("content/large", std::string(9'000'000, 'y') + noise(100'000), Effort::normal);
    add("content/large and fast", std::string(9'000'000, 'y') + noise(100'000), Effort::fast);
    add("content/zeros", std::string(20'000'000, '\0'), Effort::normal);
    add("content/empty", "", Effort::normal);
    for (int i = 0; i < 66'000; ++i)
        add("many/" + std::to_string(i), "x", Effort::store);
    writer.finish("a comment").value();
    file.commit().value();
    return folder / "ours ü.zip";
}

class ForeignTools : public testing::Test
{
protected:
    void expectAccepted(const std::string& tool, const std::string& command)
    {
        if (!succeeds("command -v " + tool))
            GTEST_SKIP() << tool << " is not installed";
        EXPECT_TRUE(succeeds(command + " " + quoted(m_archive)));
    }

    TemporaryFolder m_folder;
    fs::path m_archive = writeArchive(m_folder);
};

} // namespace

TEST_F(ForeignTools, UnzipFindsNoFault)
{
    expectAccepted("unzip", "unzip -tq");
}

TEST_F(ForeignTools, SevenZipFindsNoFault)
{
    expectAccepted("7z", "7z t");
}

TEST_F(ForeignTools, PythonFindsNoFaultAndTheSameNames)
{
    expectAccepted("python3", "python3 -c 'import sys, zipfile\n"
                              "archive = zipfile.ZipFile(sys.argv[1])\n"
                              "assert archive.testzip() is None\n"
                              "assert len(archive.namelist()) == 66007\n"
                              "assert archive.namelist()[1] == \"content/gr\\u00f6\\u00dfe \\u65e5\\u672c.txt\"\n"
                              "assert archive.comment == b\"a comment\"\n"
                              "assert archive.infolist()[0].date_time == (1980, 1, 1, 0, 0, 0)'");
}

TEST(ArchiveOfPython, IsReadHere)
{
    const TemporaryFolder folder;
    if (!succeeds("command -v python3"))
        GTEST_SKIP() << "python3 is not installed";
    const auto path = folder / "theirs.zip";
    ASSERT_TRUE(succeeds("python3 -c 'import sys, zipfile\n"
                         "with zipfile.ZipFile(sys.argv[1], \"w\", zipfile.ZIP_DEFLATED) as archive:\n"
                         "    archive.writestr(\"a\", \"x\" * 1000)\n"
                         "    with archive.open(\"b\", \"w\", force_zip64=True) as part: part.write(b\"wide\")\n"
                         "    archive.comment = b\"theirs\"' " +
                         quoted(path)));
    EXPECT_EQ(contents(*openFile(path)), (std::vector<std::string>{"a=" + std::string(1000, 'x'), "b=wide"}));
    EXPECT_EQ(verdict(readFile(path)), "ok");
}
