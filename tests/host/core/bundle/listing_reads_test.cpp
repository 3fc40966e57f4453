#include "host/core/bundle/bundle_layout.h"
#include "host/core/bundle/bundle_package.h"
#include "host/core/opc/markup/opc_names.h"
#include "host/core/opc/package_data.h"
#include "tests/host/core/bundle/bundle_making.h"
#include "tests/support/noise.h"

#include <gtest/gtest.h>

// What a listing reads is told by counting, so that no clock decides.

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO;
using namespace Kelvaris::System::IO::Bundle;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace {

struct Stretch
{
    std::uint64_t begin;
    std::uint64_t end;

    bool touches(const Stretch& other) const { return begin < other.end && other.begin < end; }
};

/// A file that remembers what was read of it.
class RecordedSource final : public Zip::ByteSource
{
public:
    explicit RecordedSource(Zip::ByteSourcePtr file) : ByteSource{file->size(), file->displayName()}, m_file{file} {}

    Expected<void, ErrorCode2> readAt(std::uint64_t offset, std::span<std::byte> target) const override
    {
        reads.push_back({offset, offset + target.size()});
        return m_file->readAt(offset, target);
    }

    mutable std::vector<Stretch> reads;

private:
    Zip::ByteSourcePtr m_file;
};

/// A file that does not shrink, so that its bytes stand in the bundle as they are. They are so many that the
/// first half lies ahead of what the one read takes that looks for the end record.
std::string design(unsigned number)
{
    return noise(150'000, number);
}

class ListingReads : public testing::Test
{
protected:
    std::filesystem::path barrelOf(unsigned examples) const
    {
        auto barrel = BarrelOfExamplesBundle::create().value();
        for (unsigned i = 0; i < examples; ++i) {
            const std::string number = std::to_string(i);
            auto example = ExampleBundle::create().value();
            addText(example, m_folder, "content/design" + number, design(i));
            example.setTitle(toString2("title " + number)).value();
            example.writeToFile(toFilePath2(m_folder / number)).value();
            (void)barrel.addExample(toFilePath2(m_folder / number), OpcPackagePartUri{toFilePath2("e/" + number)})
                .value();
        }
        const auto path = m_folder / ("barrel" + std::to_string(examples));
        barrel.writeToFile(toFilePath2(path)).value();
        return path;
    }

    /// What listing all titles and manufacturers of a barrel reads.
    static std::vector<Stretch> readsOfListing(const std::filesystem::path& barrel)
    {
        const auto source = std::make_shared<RecordedSource>(Zip::openFileSource(toFilePath2(barrel)).value());
        const auto package = OpcPackaging::detail::PackageData::openSource(source, 0).value();
        const auto examples =
            package->relationships().recordsByType(Markup::packageSource, Layout::exampleRelationship).value();
        for (const auto& relationship : examples) {
            const auto example = package->openNested(*package->findTarget(*relationship).value()).value();
            EXPECT_TRUE(example->core().text(Markup::CoreProperty::title).value());
            EXPECT_TRUE(Bundle::detail::readProperties(*example).value());
        }
        return source->reads;
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(ListingReads, TouchNoByteOfAPartThatIsNotListed)
{
    constexpr unsigned examples = 20;
    const auto path = barrelOf(examples);
    const std::string file = readFile(path);
    const auto reads = readsOfListing(path);
    for (unsigned i = 0; i < examples; ++i) {
        const std::uint64_t begin = file.find(design(i));
        ASSERT_NE(begin, std::string::npos);
        const Stretch content{begin, begin + design(i).size() / 2};
        EXPECT_TRUE(std::ranges::none_of(reads, [&](const Stretch& read) { return read.touches(content); })) << i;
    }
}

TEST_F(ListingReads, AreAsManyForEachExampleHoweverManyThereAre)
{
    const auto readsOf = [this](unsigned examples) { return readsOfListing(barrelOf(examples)).size(); };
    const std::size_t few = readsOf(10);
    const std::size_t many = readsOf(40);
    // the end record, the directory and what every package has are read once
    EXPECT_EQ((many - few) % 30, 0U);
    EXPECT_LE((many - few) / 30, 8U);
}
