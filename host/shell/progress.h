#pragma once

#include "host/shell/log_output.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace HostShell {

/// A line on a terminal that tells how far disk work is, once it takes long enough to wonder. It is gone when this is.
///
/// On a narrow terminal it is shorter: a line that is broken in two could not be taken away again.
class Progress
{
public:
    enum class Counted { read, written };

    using Write = std::function<void(const std::string& text)>;
    using Columns = std::function<std::size_t()>;

    /// @param label  "packing"
    /// @param total  bytes to move; what is moved beyond counts as all
    Progress(std::string label, std::uint64_t total, Counted counted);

    /// Where the text goes, and how wide a line may be there at the moment.
    struct Place
    {
        Write write;
        Columns columns;
    };

    /// With a place for the text and its own patience.
    Progress(std::string label, std::uint64_t total, Counted counted, Place place, std::chrono::milliseconds patience);

    ~Progress();

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Takes the line away until there is something new to show.
    void hide();

private:
    void show(std::uint64_t moved);
    std::string fittingLine(int percent) const;

    std::string m_label;
    std::uint64_t m_total;
    Place m_place;
    std::optional<LogTap> m_tap;
    int m_shownPercent = -1;
    std::chrono::steady_clock::time_point m_next;
};

/// "1.2 GB", for people.
std::string sizeInWords(std::uint64_t bytes);

} // namespace HostShell
