#include "demo_random.h"

namespace tarnwick::demo {

namespace {

constexpr quint64 increment = 0x9E3779B97F4A7C15;

quint64 scrambled(quint64 value)
{
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

} // namespace

Random::Random(quint64 seed, quint64 stream)
    : m_state(scrambled(seed + increment) ^ scrambled(~stream))
{}

quint64 Random::next()
{
    m_state += increment;
    return scrambled(m_state);
}

int Random::below(int bound)
{
    return static_cast<int>(((next() >> 32) * static_cast<quint64>(bound)) >> 32);
}

} // namespace tarnwick::demo
