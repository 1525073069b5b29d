#pragma once

#include <cstddef>

// How one side's axes lie in the other's, and whether faces change their winding.
struct VekOrientation {
    bool flip[3] = {false, false, false};  // mirrored along x, y, z
    bool switchYZ = false;                 // y and z exchanged
    double centre[3] = {0.0, 0.0, 0.0};    // the point that stays where it is
    bool rewind = false;
};

// Moves positions from one orientation into the other: for each axis k of the new position,
//
//     q[k] = (p[from(k)] - centre[from(k)]) * sign(k) + centre[k]
//
// in double precision, where from() exchanges y and z if they are switched. toHost is the inverse
// of toTarget for the same orientation. With no flip, no switch and a centre of zero, positions
// keep their bits.
class VekPositionMap {
public:
    static VekPositionMap toTarget(const VekOrientation& orientation);
    static VekPositionMap toHost(const VekOrientation& orientation);

    // Whether every position keeps its bits.
    bool isIdentity() const { return m_identity; }
    // Maps `count` positions of three floats each, in place; `positions` is aligned for floats.
    void apply(float* positions, std::size_t count) const;

private:
    VekPositionMap(const VekOrientation& orientation, const double (&signs)[3]);

    bool m_identity = false;
    bool m_switchYZ = false;
    bool m_centreIsZero = false;
    double m_minus[3];  // per new axis: taken off before the sign, the sign, added after it
    double m_sign[3];
    double m_plus[3];
};
