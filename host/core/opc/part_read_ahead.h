#pragma once

#include "host/core/opc/package_parts.h"
#include "host/core/opc/zip/workers.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

namespace Kelvaris::System::IO::OpcPackaging::detail {

/// Streams parts one after the other. While the caller is busy with one, other processors inflate the next ones; the
/// package's file is read by the caller's thread alone.
class KELVARIS_CORE_API PartReadAhead
{
public:
    /// @param parts  outlives this object and is not changed meanwhile
    PartReadAhead(const PackageParts& parts, std::vector<PartPtr> order) : m_parts{parts}, m_order{std::move(order)} {}

    /// Streams the next one of the order; to be called once for each.
    /// @return  as `PackageParts::stream`, when it is that part's turn
    Result<> next(const Disk::ByteSink& sink);

    /// Another number of threads than the machine's processors ask for; for tests.
    void setThreads(unsigned threads) noexcept { m_workers.setLimit(threads); }

private:
    void readAhead();
    Result<> streamFrom(Zip::UnpackingJob& job, const Disk::ByteSink& sink);

    const PackageParts& m_parts;
    std::vector<PartPtr> m_order;
    std::size_t m_next = 0;
    /// From `m_next` on; null for what is streamed when its turn comes.
    std::deque<Result<Zip::UnpackingJobPtr>> m_ahead;
    std::uint64_t m_memory = 0; ///< that these need
    Zip::BlockDeflater m_deflater;
    Zip::Workers m_workers;
};

} // namespace Kelvaris::System::IO::OpcPackaging::detail
