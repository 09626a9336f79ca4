#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace tarnwick::fuzzing {

using Input = std::vector<std::uint8_t>;

/// Changes inputs at random, without a look at which way they take. The same seed changes the same.
class Mutation
{
public:
    explicit Mutation(unsigned seed)
        : m_random(seed)
    {}

    /// One of the inputs with a few changes, some of them pieces of another.
    Input drawFrom(const std::vector<Input> &inputs)
    {
        Input input = inputs[below(inputs.size())];
        for (std::size_t left = 1 + below(6); left > 0; --left)
            change(input, inputs[below(inputs.size())]);
        return input;
    }

private:
    std::size_t below(std::size_t bound) { return bound == 0 ? 0 : m_random() % bound; }
    std::ptrdiff_t placeIn(const Input &input) { return std::ptrdiff_t(below(input.size() + 1)); }

    void change(Input &input, const Input &other)
    {
        if (input.empty())
            input.push_back(0);
        switch (below(7)) {
        case 0:
            input[below(input.size())] ^= std::uint8_t(1u << below(8));
            break;
        case 1:
            input[below(input.size())] = std::uint8_t(below(256));
            break;
        case 2:
            setNumber(input);
            break;
        case 3:
            input.insert(input.begin() + placeIn(input), std::uint8_t(below(256)));
            break;
        case 4:
            removePiece(input);
            break;
        case 5:
            insertPiece(input, other);
            break;
        default:
            insertPiece(input, Input(input));
            break;
        }
    }

    /// A length or a count at the edge of what fits, high byte first.
    void setNumber(Input &input)
    {
        static constexpr std::uint32_t edges[] = {
            0,    1,     2,      7,      8,          9,          0x7F,       0x80,
            0xFF, 0x100, 0x7FFF, 0xFFFF, 0x7F7F7F7F, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
        const std::uint32_t number = edges[below(std::size(edges))] + std::uint32_t(below(3)) - 1;
        const std::size_t start = below(input.size());
        for (std::size_t i = 0; i < 4 && start + i < input.size(); ++i)
            input[start + i] = std::uint8_t(number >> (24 - 8 * i));
    }

    void removePiece(Input &input)
    {
        const std::size_t start = below(input.size());
        const std::size_t count = 1 + below(std::min<std::size_t>(input.size() - start, 32));
        const auto from = input.begin() + std::ptrdiff_t(start);
        input.erase(from, from + std::ptrdiff_t(std::min(count, input.size() - start)));
    }

    void insertPiece(Input &input, const Input &other)
    {
        constexpr std::size_t largestInput = 16 * 1024;
        if (other.empty() || input.size() > largestInput)
            return;
        const std::size_t start = below(other.size());
        const std::size_t count = 1 + below(std::min<std::size_t>(other.size() - start, 64));
        const auto from = other.begin() + std::ptrdiff_t(start);
        const auto end = from + std::ptrdiff_t(std::min(count, other.size() - start));
        input.insert(input.begin() + placeIn(input), from, end);
    }

    std::mt19937 m_random;
};

} // namespace tarnwick::fuzzing
