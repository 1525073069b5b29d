#pragma once

#include <iosfwd>

#include "foundation/bx_array.h"

// Points and directions: plain values, zero unless said otherwise. Arrays of the float types are
// written to files as they lie in memory.
//
// Operations that several types have:
//   normalize()          divides by the length; the result, where there is one, is the length
//   normalize(length)    scales to this length
//   snapToIntegerValues  each component that, seen from zero, lies less than `tolerance` beyond
//                        an integer becomes it: with 0.001, 3.0004 becomes 3 and 2.9996 stays
//   makeOrthogonalTo     takes away the part along n, which has to be of unit length; true
//   findOrthogonalVector `out` = axis × this, with the axis of the smallest component; not of unit
//                        length

struct BXVector2d {
    constexpr BXVector2d() = default;
    constexpr BXVector2d(double x1, double y1) : x(x1), y(y1) {}

    // Lengths up to 1e-6 are left alone.
    void normalize();
    void normalize(double length);
    void snapToIntegerValues(double tolerance);

    static const BXVector2d m_zero;

    double x = 0.0;
    double y = 0.0;
};

struct BXVector2f {
    constexpr BXVector2f() = default;
    constexpr BXVector2f(float x1, float y1) : x(x1), y(y1) {}

    // Lengths up to 1e-6 are left alone; normalize then gives 0.
    float normalize();
    void normalize(float length);
    void snapToIntegerValues(float tolerance);

    static const BXVector2f m_zero;

    float x = 0.0f;
    float y = 0.0f;
};

struct BXVector3d {
    constexpr BXVector3d() = default;
    constexpr BXVector3d(double x1, double y1, double z1) : x(x1), y(y1), z(z1) {}

    // Lengths below 1e-24 are left alone, and the result is 1.
    double normalize();
    bool makeOrthogonalTo(const BXVector3d& n);
    void findOrthogonalVector(BXVector3d& out) const;

    static const BXVector3d m_zero;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

struct BXVector3f {
    constexpr BXVector3f() = default;
    constexpr BXVector3f(float x1, float y1, float z1) : x(x1), y(y1), z(z1) {}
    constexpr BXVector3f(const BXVector2f& v) : x(v.x), y(v.y) {}

    // The length 0 is left alone, and the result is 0.
    float normalize();
    bool makeOrthogonalTo(const BXVector3f& n);
    void findOrthogonalVector(BXVector3f& out) const;

    // The indexes of the points in the order of x, then y, then z, where coordinates no more than
    // `tolerance` apart count as the same; then in the order of the indexes. Points within the
    // tolerance of each other thus come to lie side by side, but for chains of them that are longer
    // than it. The points stay where they are.
    static void indexedSort(BXArray<int>& indices, const BXArray<BXVector3f>& points,
                            float tolerance);

    static const BXVector3f m_zero;
    static const BXVector3f m_axis[3];

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};

static_assert(sizeof(BXVector2f) == 8 && sizeof(BXVector3f) == 12, "the layout of the file");

// Component by component, as numbers compare: 0 equals -0, NaN equals nothing.
constexpr bool operator==(const BXVector2d& a, const BXVector2d& b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const BXVector2f& a, const BXVector2f& b) {
    return a.x == b.x && a.y == b.y;
}
constexpr bool operator==(const BXVector3d& a, const BXVector3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
constexpr bool operator==(const BXVector3f& a, const BXVector3f& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
}
constexpr bool operator!=(const BXVector2d& a, const BXVector2d& b) {
    return !(a == b);
}
constexpr bool operator!=(const BXVector2f& a, const BXVector2f& b) {
    return !(a == b);
}
constexpr bool operator!=(const BXVector3d& a, const BXVector3d& b) {
    return !(a == b);
}
constexpr bool operator!=(const BXVector3f& a, const BXVector3f& b) {
    return !(a == b);
}

// As (1, 2, 3).
std::ostream& operator<<(std::ostream& out, const BXVector2d& v);
std::ostream& operator<<(std::ostream& out, const BXVector2f& v);
std::ostream& operator<<(std::ostream& out, const BXVector3d& v);
std::ostream& operator<<(std::ostream& out, const BXVector3f& v);
