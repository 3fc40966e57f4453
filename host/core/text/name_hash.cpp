#include "host/core/text/name_hash.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <random>

namespace Kelvaris::System::Text {

namespace {

/// The state of SipHash: Aumasson and Bernstein, "SipHash: a fast short-input PRF", 2012.
class SipHash
{
public:
    SipHash(std::uint64_t key0, std::uint64_t key1) noexcept
        : m_v0{key0 ^ 0x736f6d6570736575U}, m_v1{key1 ^ 0x646f72616e646f6dU}, m_v2{key0 ^ 0x6c7967656e657261U},
          m_v3{key1 ^ 0x7465646279746573U}
    {
    }

    void add(std::uint64_t word) noexcept
    {
        m_v3 ^= word;
        round();
        m_v0 ^= word;
    }

    std::uint64_t finish() noexcept
    {
        m_v2 ^= 0xffU;
        round();
        round();
        round();
        return m_v0 ^ m_v1 ^ m_v2 ^ m_v3;
    }

private:
    void round() noexcept
    {
        m_v0 += m_v1;
        m_v2 += m_v3;
        m_v1 = std::rotl(m_v1, 13) ^ m_v0;
        m_v3 = std::rotl(m_v3, 16) ^ m_v2;
        m_v0 = std::rotl(m_v0, 32);
        m_v2 += m_v1;
        m_v0 += m_v3;
        m_v1 = std::rotl(m_v1, 17) ^ m_v2;
        m_v3 = std::rotl(m_v3, 21) ^ m_v0;
        m_v2 = std::rotl(m_v2, 32);
    }

    std::uint64_t m_v0;
    std::uint64_t m_v1;
    std::uint64_t m_v2;
    std::uint64_t m_v3;
};

struct Secret
{
    std::uint64_t first;
    std::uint64_t second;
};

Secret randomSecret()
{
    std::random_device device;
    std::uniform_int_distribution<std::uint64_t> number;
    return {number(device), number(device)};
}

const Secret& secret()
{
    static const Secret instance = randomSecret();
    return instance;
}

} // namespace

std::size_t NameHash::operator()(std::string_view text) const
{
    const Secret& key = secret();
    SipHash hash{key.first, key.second};
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= sizeof(std::uint64_t); left -= sizeof(std::uint64_t), at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        hash.add(word);
    }
    std::uint64_t last = 0;
    if (left > 0)
        std::memcpy(&last, at, left);
    hash.add(last | static_cast<std::uint64_t>(text.size()) << 56U);
    return hash.finish();
}

} // namespace Kelvaris::System::Text
