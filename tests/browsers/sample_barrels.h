#pragma once

#include "kelvaris/system/file_path2.h"
#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/string2.h"
#include "tests/support/temporary_folder.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

/// What an example of a test is made of. An empty text is not set in the bundle.
struct SampleExample
{
    QString title;
    QString description{};
    QString manufacturer{};
    QStringList keywords{};
    std::string page{};                ///< "content/documentation.html"; none when empty
    bool hasEmptyPage = false;         ///< the page is there and holds no byte
    std::string file = "design.kvsch"; ///< the primary file, as a path below "content"
    std::string bytes = "the schematic";
    bool hasPrimaryFile = true;
};

Kelvaris::System::String2 toString2(const QString& text);
Kelvaris::System::FilePath2 toFilePath(const std::filesystem::path& path);

/// Writes an example bundle below the folder and gives its path.
std::filesystem::path writeExample(const TemporaryFolder& folder, const std::string& name,
                                   const SampleExample& example);

using BarrelChange = std::function<void(Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle&)>;

/// Writes a barrel of examples below the folder and gives its path.
/// @param change  called with the barrel before it is written
std::filesystem::path writeBarrel(const TemporaryFolder& folder, const std::string& name,
                                  const std::vector<SampleExample>& examples, const BarrelChange& change = {});

/// A change that adds a relationship to an example that is not there.
BarrelChange addLostExample();

/// A change that adds an example whose bytes are no bundle.
BarrelChange addUnreadableExample(const TemporaryFolder& folder);

/// A change that adds an example whose page, or whose core properties (title, description and keywords), cannot be
/// read: their bytes are not what was written.
BarrelChange addExampleWithDamagedPage(const TemporaryFolder& folder, const SampleExample& example);
BarrelChange addExampleWithDamagedTexts(const TemporaryFolder& folder, const SampleExample& example);

/// A change that adds an example whose primary file is no file to unpack, and has a name that no file can have.
BarrelChange addExampleWithNamelessPrimaryFile(const TemporaryFolder& folder);

/// The rows of a list, one a line. Rows below a row are left out: the example browser's model counts all its rows
/// there, too, and would be followed without an end.
std::string rowsOf(const QAbstractItemModel& list);

Kelvaris::System::IO::Bundle::BarrelOfExamplesBundle openBarrel(const std::filesystem::path& path);
