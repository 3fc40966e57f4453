#pragma once

/// The file names that bundles carry, as the file dialogs show them, and other texts that several windows share.
/// Nothing appends an extension to a name, and nothing refuses a name for the lack of one.
namespace BundleTexts {

inline constexpr const char* contentBundleFilter = "Content Bundle (*.kvbdl.zip *.zip)";
inline constexpr const char* scriptableBundleFilter = "Scriptable Bundle (*.kvsbd.zip *.zip)";
inline constexpr const char* barrelFilter = "Barrel of Examples (*.kvexs *.kvexs.zip)";

/// Files that may be added to a bundle from an editor.
inline constexpr const char* addableFilesFilter = "Kelvaris Files (*.kvsch *.kvscr *.testplan *.va)";

/// The type of the relationships from a package to its content parts.
inline constexpr const wchar_t* contentRelationshipType =
    L"http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";

} // namespace BundleTexts
