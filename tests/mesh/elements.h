#pragma once

// Elements for the tests: every subset of nodes, and where the nodes lie.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace lmw::test {

enum class Family { line, triangle, quadrilateral };

/// One element kind: its node numbers, 0 for absent ones.
struct TestElement {
    Family family;
    std::array<std::int32_t, 8> nodes;
    [[nodiscard]] bool Has(int node) const { return nodes[static_cast<std::size_t>(node)] > 0; }
    [[nodiscard]] std::string Name() const {
        std::string name("nodes");
        for (int node = 0; node < 8; ++node) {
            name.append(1, ' ').append(1, Has(node) ? static_cast<char>('0' + node) : '-');
        }
        return name;
    }
};

struct LocalPoint {
    double r;
    double s;
};

/// The local positions of the 8 slots (slots a family has not: 0).
inline std::array<LocalPoint, 8> NodePositions(Family family) {
    switch (family) {
        case Family::line:
            return {{{1, 0}, {-1, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}}};
        case Family::triangle:
            return {{{0, 0}, {1, 0}, {0, 1}, {0, 0}, {0.5, 0}, {0.5, 0.5}, {0, 0.5}, {0, 0}}};
        default:
            return {{{1, 1}, {-1, 1}, {-1, -1}, {1, -1}, {0, 1}, {-1, 0}, {0, -1}, {1, 0}}};
    }
}

/// All 26: 16 quadrilaterals, 8 triangles, 2 lines.
inline std::vector<TestElement> AllElements() {
    std::vector<TestElement> elements;
    const auto add = [&](Family family, int corners, int midside_slots) {
        for (int subset = 0; subset < (1 << midside_slots); ++subset) {
            TestElement element{family, {}};
            for (int node = 0; node < corners; ++node) {
                element.nodes[static_cast<std::size_t>(node)] = 101 + node;
            }
            for (int k = 0; k < midside_slots; ++k) {
                element.nodes[static_cast<std::size_t>(4 + k)] =
                    (subset >> k) % 2 != 0 ? 105 + k : 0;
            }
            elements.push_back(element);
        }
    };
    add(Family::quadrilateral, 4, 4);
    add(Family::triangle, 3, 3);
    add(Family::line, 2, 1);
    return elements;
}

}  // namespace lmw::test
