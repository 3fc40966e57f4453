#include "kelvaris/system/uuid.h"

#include <uuid.h>

#include <array>

namespace Kelvaris::System {

namespace {

std::string randomIdentifier()
{
    uuid_t bytes;
    uuid_generate_random(bytes);
    std::array<char, UUID_STR_LEN> text;
    uuid_unparse_lower(bytes, text.data());
    return text.data();
}

} // namespace

UUID::UUID() : m_text{randomIdentifier()} {}

UUID::~UUID() = default;

String UUID::toString() const
{
    return m_text;
}

std::string UUID::toStdString() const
{
    return m_text;
}

} // namespace Kelvaris::System
