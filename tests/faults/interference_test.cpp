#include "host/core/paths/disk/faults.h"
#include "kelvaris/system/core_error.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "tests/faults/work.h"
#include "tests/host/core/opc/package_file.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <fstream>

// What happens to files while they are read and written: each of these things happens ahead of every call to the
// system, one after the other.

#if defined(HOLLERWICK_FAULTS)

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::OpcPackaging;
using Bundle::ExampleBundle;
namespace fs = std::filesystem;

namespace {

using Done = Expected<void, ErrorCode2>;

ErrorCode2 fileTruncated()
{
    return {static_cast<int>(CoreError::fileTruncated), core_error_category()};
}

std::string text(std::size_t size)
{
    std::string bytes;
    for (int line = 0; bytes.size() < size; ++line)
        bytes += "line " + std::to_string(line) + '\n';
    bytes.resize(size);
    return bytes;
}

class Interference : public testing::Test
{
protected:
    ~Interference() override { Disk::Faults::clear(); }

    /// Does `work` again and again, with `deed` ahead of each of its calls to the system in turn.
    /// @param expect  sees what came of it
    static void aheadOfEachCall(const std::function<void()>& prepare, const std::function<Done()>& work,
                                const std::function<void()>& deed, const std::function<void(const Done&)>& expect)
    {
        prepare();
        Disk::Faults::clear();
        const Done undisturbed = work();
        ASSERT_TRUE(undisturbed) << toStdString(undisturbed.error().message());
        const std::uint64_t calls = Disk::Faults::calls();
        ASSERT_GT(calls, 0U);
        for (std::uint64_t call = 0; call < calls && !HasFailure(); ++call) {
            SCOPED_TRACE("ahead of call " + std::to_string(call) + " of " + std::to_string(calls));
            prepare();
            Disk::Faults::interfere(call, deed);
            const Done result = work();
            Disk::Faults::clear();
            expect(result);
        }
    }

    static void expectNamed(const Done& result, const fs::path& path)
    {
        if (!result) {
            EXPECT_NE(toStdString(result.error().message()).find(path.filename().string()), std::string::npos)
                << toStdString(result.error().message());
        }
    }

    /// An example of one file.
    Expected<ExampleBundle, ErrorCode2> example(const fs::path& file) const
    {
        auto bundle = ExampleBundle::create();
        if (!bundle)
            return bundle;
        const OpcPackagePartUri uri{L"/content/top.kvsch"};
        if (auto added = bundle->addFile(toFilePath2(file), uri, OpcPackageCompressionType::normal); !added)
            return added.error();
        return bundle;
    }

    /// The same for a bundle that is looked at afterwards, whether this succeeds or not.
    Done putExampleInto(std::optional<ExampleBundle>& bundle) const
    {
        auto made = example(source);
        if (!made)
            return made.error();
        bundle.emplace(std::move(*made));
        return {};
    }

    TemporaryFolder folder;
    fs::path source = folder / "design/top.kvsch";
    fs::path target = folder / "out/bundle.kvbdl.zip";
};

} // namespace

TEST_F(Interference, ADirectoryThatVanishesDuringASaveIsAnErrorAndTheNextSaveGoesThrough)
{
    folder.write("design/top.kvsch", text(400'000));
    auto bundle = example(source).value();
    const auto makeDirectory = [&] { fs::create_directories(target.parent_path()); };
    aheadOfEachCall(
        makeDirectory, [&] { return bundle.writeToFile(toFilePath2(target)); },
        [&] { fs::remove_all(target.parent_path()); },
        [&](const Done& result) {
            expectNamed(result, target);
            makeDirectory();
            const Done again = bundle.writeToFile(toFilePath2(target));
            EXPECT_TRUE(again) << toStdString(again.error().message());
            EXPECT_EQ(snapshotOf(target.parent_path()).size(), 1U);
        });
}

TEST_F(Interference, ADirectoryThatVanishesDuringUnpackingIsAnErrorAndLeavesNothing)
{
    folder.write("design/top.kvsch", text(400'000));
    fs::create_directories(target.parent_path());
    example(source).value().writeToFile(toFilePath2(target)).value();
    const fs::path parent = folder / "designs";
    aheadOfEachCall(
        [&] {
            fs::remove_all(parent);
            fs::create_directory(parent);
        },
        [&]() -> Done {
            auto bundle = ExampleBundle::open(toFilePath2(target));
            return bundle ? bundle->unpack(toFilePath2(parent / "new")) : Done{bundle.error()};
        },
        [&] { fs::remove_all(parent); },
        [&](const Done& result) {
            expectNamed(result, parent / "new");
            if (!result) {
                EXPECT_FALSE(fs::exists(parent / "new"));
            }
        });
}

TEST_F(Interference, AFileThatShrinksWhileItIsPackedIsPackedWholeOrRefused)
{
    // in memory, as one block, and as a stream
    for (const std::size_t size : {std::size_t{400'000}, std::size_t{9'000'000}}) {
        const std::string bytes = text(size);
        std::optional<ExampleBundle> bundle;
        aheadOfEachCall([&] { folder.write("design/top.kvsch", bytes); }, [&] { return putExampleInto(bundle); },
                        [&] { fs::resize_file(source, 1000); },
                        [&](const Done& result) {
                            expectNamed(result, source);
                            if (!result) {
                                EXPECT_EQ(result.error(), fileTruncated());
                                return;
                            }
                            fs::remove_all(folder / "unpacked");
                            bundle->unpack(toFilePath2(folder / "unpacked")).value();
                            const std::string packed = readFile(folder / "unpacked/content/top.kvsch");
                            EXPECT_TRUE(packed == bytes || packed == bytes.substr(0, 1000)) << packed.size();
                        });
    }
}

TEST_F(Interference, AFileThatGrowsWhileItIsPackedIsPackedAsItWasOrAsItIs)
{
    const std::string bytes = text(400'000);
    const std::string grown = text(5'000'000);
    std::optional<ExampleBundle> bundle;
    aheadOfEachCall([&] { folder.write("design/top.kvsch", bytes); }, [&] { return putExampleInto(bundle); },
                    [&] {
                        std::ofstream{source, std::ios::binary | std::ios::app} << grown.substr(bytes.size());
                    },
                    [&](const Done& result) {
                        ASSERT_TRUE(result);
                        fs::remove_all(folder / "unpacked");
                        bundle->unpack(toFilePath2(folder / "unpacked")).value();
                        const std::string packed = readFile(folder / "unpacked/content/top.kvsch");
                        EXPECT_TRUE(packed == bytes || packed == grown) << packed.size();
                    });
}

TEST_F(Interference, ABundleThatIsCutShortWhileItIsOpenIsAnErrorAndNothingIsSaved)
{
    folder.write("design/top.kvsch", text(400'000));
    fs::create_directories(target.parent_path());
    example(source).value().writeToFile(toFilePath2(target)).value();
    const std::string whole = readFile(target);
    const fs::path copy = folder / "copies/copy.kvbdl.zip";
    for (const std::size_t left : {std::size_t{0}, std::size_t{100}, whole.size() / 2, whole.size() - 1}) {
        aheadOfEachCall(
            [&] {
                folder.write("out/bundle.kvbdl.zip", whole);
                fs::remove_all(copy.parent_path());
                fs::create_directory(copy.parent_path());
            },
            [&]() -> Done {
                auto bundle = ExampleBundle::open(toFilePath2(target));
                return bundle ? bundle->writeToFile(toFilePath2(copy)) : Done{bundle.error()};
            },
            [&] { fs::resize_file(target, left); },
            [&](const Done& result) {
                expectNamed(result, target);
                const Snapshot copies = snapshotOf(copy.parent_path());
                EXPECT_EQ(copies.size(), result ? 1U : 0U);
                if (result) {
                    EXPECT_TRUE(copies.begin()->second == whole);
                }
            });
    }
}

#endif
