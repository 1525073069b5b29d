#include "formats/vek_position_map.h"

#include <cmath>
#include <utility>

namespace {

constexpr std::size_t kGroup = 4;  // vertices: twelve floats, whole vectors whatever their width
constexpr std::size_t kGroupFloats = 3 * kGroup;

// The per-axis numbers, repeated for a group of vertices, so that the loops run straight through.
template <class T>
struct Pattern {
    explicit Pattern(const double (&perAxis)[3]) {
        for (std::size_t i = 0; i < kGroupFloats; ++i) values[i] = static_cast<T>(perAxis[i % 3]);
    }
    T values[kGroupFloats];
};

void exchangeYZ(float* positions, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i, positions += 3) std::swap(positions[1], positions[2]);
}

template <class Step>
void forEachFloat(float* positions, std::size_t count, Step step) {
    const std::size_t groups = count / kGroup;
    for (std::size_t group = 0; group < groups; ++group, positions += kGroupFloats) {
        for (std::size_t i = 0; i < kGroupFloats; ++i) positions[i] = step(positions[i], i);
    }
    const std::size_t rest = 3 * (count % kGroup);
    for (std::size_t i = 0; i < rest; ++i) positions[i] = step(positions[i], i);
}

bool isPositiveZero(double value) {
    return value == 0.0 && !std::signbit(value);
}

}  // namespace

VekPositionMap VekPositionMap::toTarget(const VekOrientation& orientation) {
    double signs[3];
    for (int axis = 0; axis < 3; ++axis) signs[axis] = orientation.flip[axis] ? -1.0 : 1.0;
    return VekPositionMap(orientation, signs);
}

VekPositionMap VekPositionMap::toHost(const VekOrientation& orientation) {
    // The inverse applies each sign on the axis where the position comes from.
    double signs[3];
    for (int axis = 0; axis < 3; ++axis) signs[axis] = orientation.flip[axis] ? -1.0 : 1.0;
    if (orientation.switchYZ) std::swap(signs[1], signs[2]);
    return VekPositionMap(orientation, signs);
}

VekPositionMap::VekPositionMap(const VekOrientation& orientation, const double (&signs)[3])
    : m_switchYZ(orientation.switchYZ) {
    bool centreIsAnyZero = true;
    m_centreIsZero = true;
    bool flips = false;
    for (int axis = 0; axis < 3; ++axis) {
        const double centre = orientation.centre[axis];
        centreIsAnyZero = centreIsAnyZero && centre == 0.0;
        m_centreIsZero = m_centreIsZero && isPositiveZero(centre);
        flips = flips || orientation.flip[axis];
        m_sign[axis] = signs[axis];
        m_minus[axis] = centre;
        m_plus[axis] = centre;
    }
    if (m_switchYZ) std::swap(m_minus[1], m_minus[2]);
    m_identity = !flips && !m_switchYZ && centreIsAnyZero;
}

void VekPositionMap::apply(float* positions, std::size_t count) const {
    if (m_identity) return;
    if (m_switchYZ) exchangeYZ(positions, count);
    if (m_centreIsZero) {
        // About the origin the formula gives the same bits in single precision, at the speed of
        // memory. Adding zero turns -0 into 0, as the formula does.
        const Pattern<float> sign(m_sign);
        forEachFloat(positions, count,
                     [&](float p, std::size_t i) { return p * sign.values[i] + 0.0f; });
        return;
    }
    const Pattern<double> minus(m_minus), sign(m_sign), plus(m_plus);
    forEachFloat(positions, count, [&](float p, std::size_t i) {
        return static_cast<float>((p - minus.values[i]) * sign.values[i] + plus.values[i]);
    });
}
