#include "host/core/text/text_view.h"
#include "kelvaris/system/error_category2.h"
#include "kelvaris/system/string2.h"

#include <future>
#include <ios>
#include <system_error>

namespace Kelvaris::System {

namespace {

/// A domain of the standard library, in its words.
class StandardCategory final : public ErrorCategory2
{
public:
    explicit StandardCategory(const std::error_category& category) noexcept : m_category{&category} {}

    const char* name() const noexcept override { return m_category->name(); }

    String2 message(int value) const override
    {
        // the value for failures that nobody described; the system has no words for it
        if (value == -1)
            return u8"unknown failure";
        return Text::toString2(m_category->message(value));
    }

private:
    const std::error_category* m_category;
};

} // namespace

const ErrorCategory2& system_error_category()
{
    static const StandardCategory category{std::system_category()};
    return category;
}

const ErrorCategory2& generic_error_category()
{
    static const StandardCategory category{std::generic_category()};
    return category;
}

const ErrorCategory2& iostream_error_category()
{
    static const StandardCategory category{std::iostream_category()};
    return category;
}

const ErrorCategory2& future_error_category()
{
    static const StandardCategory category{std::future_category()};
    return category;
}

} // namespace Kelvaris::System
