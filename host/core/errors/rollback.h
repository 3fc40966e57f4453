#pragma once

#include <exception>
#include <utility>

namespace Kelvaris::System::Errors {

/// Takes back the first half of a change when the second one fails, by an error or by an exception:
///
///     names.add(name);
///     Rollback forget{[&] { names.remove(name); }};
///     parts.push_back(part);
///     forget.dismiss();
template <class Step>
class [[nodiscard]] Rollback
{
public:
    explicit Rollback(Step step) : m_step{std::move(step)} {}

    Rollback(const Rollback&) = delete;
    Rollback& operator=(const Rollback&) = delete;

    ~Rollback()
    {
        if (!m_isNeeded)
            return;
        try {
            m_step();
        } catch (const std::exception&) {
            // the failure that is being reported is the one to tell of
            return;
        }
    }

    void dismiss() noexcept { m_isNeeded = false; }

private:
    Step m_step;
    bool m_isNeeded = true;
};

} // namespace Kelvaris::System::Errors
