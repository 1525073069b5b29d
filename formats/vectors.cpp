#include "formats/vectors.h"

#include <cmath>
#include <ostream>

#include "formats/indexed_sort.h"

namespace {

constexpr double kShortest2 = 1e-6;
constexpr double kShortest3d = 1e-24;

// Lengths of float vectors are worked out in double, where their squares neither overflow nor
// vanish; the length itself can still be beyond float, and is then infinite.
float lengthOf(const BXVector2f& v) {
    const double x = v.x, y = v.y;
    return static_cast<float>(std::sqrt(x * x + y * y));
}

float lengthOf(const BXVector3f& v) {
    const double x = v.x, y = v.y, z = v.z;
    return static_cast<float>(std::sqrt(x * x + y * y + z * z));
}

// Required(R70): cut toward zero, not rounded, so that only what lies beyond an integer snaps.
template <class Number>
void snap(Number& c, Number tolerance) {
    // Adding zero makes 0 of -0.
    const Number whole = std::trunc(c) + Number(0);
    const Number beyond = c - whole;
    if (-tolerance < beyond && beyond < tolerance) c = whole;
}

template <class Vector>
void takeAwayAlong(Vector& v, const Vector& n) {
    const auto along = v.x * n.x + v.y * n.y + v.z * n.z;
    v = Vector(v.x - along * n.x, v.y - along * n.y, v.z - along * n.z);
}

template <class Vector>
Vector crossed(const Vector& a, const Vector& v) {
    return Vector(a.y * v.z - a.z * v.y, a.z * v.x - a.x * v.z, a.x * v.y - a.y * v.x);
}

template <class Vector>
Vector axisOfSmallest(const Vector& v) {
    const auto x = std::fabs(v.x), y = std::fabs(v.y), z = std::fabs(v.z);
    if (x > y) return y > z ? Vector(0, 0, 1) : Vector(0, 1, 0);
    return x > z ? Vector(0, 0, 1) : Vector(1, 0, 0);
}

}  // namespace

const BXVector2d BXVector2d::m_zero;
const BXVector2f BXVector2f::m_zero;
const BXVector3d BXVector3d::m_zero;
const BXVector3f BXVector3f::m_zero;
const BXVector3f BXVector3f::m_axis[3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

void BXVector2d::normalize() {
    const double length = std::hypot(x, y);
    if (length <= kShortest2) return;
    x /= length;
    y /= length;
}

void BXVector2d::normalize(double length) {
    const double before = std::hypot(x, y);
    if (before <= kShortest2) return;
    x *= length / before;
    y *= length / before;
}

void BXVector2d::snapToIntegerValues(double tolerance) {
    snap(x, tolerance);
    snap(y, tolerance);
}

float BXVector2f::normalize() {
    const float length = lengthOf(*this);
    if (static_cast<double>(length) <= kShortest2) return 0.0f;
    x /= length;
    y /= length;
    return length;
}

void BXVector2f::normalize(float length) {
    const float before = lengthOf(*this);
    if (static_cast<double>(before) <= kShortest2) return;
    x *= length / before;
    y *= length / before;
}

void BXVector2f::snapToIntegerValues(float tolerance) {
    snap(x, tolerance);
    snap(y, tolerance);
}

double BXVector3d::normalize() {
    // Two of two components: of three, one of them infinite, some libraries make no number.
    const double length = std::hypot(std::hypot(x, y), z);
    // Required(R71): 1, where the float types give 0.
    if (length < kShortest3d) return 1.0;
    x /= length;
    y /= length;
    z /= length;
    return length;
}

bool BXVector3d::makeOrthogonalTo(const BXVector3d& n) {
    takeAwayAlong(*this, n);
    return true;
}

void BXVector3d::findOrthogonalVector(BXVector3d& out) const {
    out = crossed(axisOfSmallest(*this), *this);
}

float BXVector3f::normalize() {
    const float length = lengthOf(*this);
    if (length == 0.0f) return 0.0f;
    x /= length;
    y /= length;
    z /= length;
    return length;
}

bool BXVector3f::makeOrthogonalTo(const BXVector3f& n) {
    takeAwayAlong(*this, n);
    return true;
}

void BXVector3f::findOrthogonalVector(BXVector3f& out) const {
    out = crossed(axisOfSmallest(*this), *this);
}

void BXVector3f::indexedSort(BXArray<int>& indices, const BXArray<BXVector3f>& points,
                             float tolerance) {
    ::indexedSort(indices, static_cast<int>(points.size()), points.data(),
                  BXVector3fComp(tolerance));
}

std::ostream& operator<<(std::ostream& out, const BXVector2d& v) {
    return out << '(' << v.x << ", " << v.y << ')';
}

std::ostream& operator<<(std::ostream& out, const BXVector2f& v) {
    return out << '(' << v.x << ", " << v.y << ')';
}

std::ostream& operator<<(std::ostream& out, const BXVector3d& v) {
    return out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

std::ostream& operator<<(std::ostream& out, const BXVector3f& v) {
    return out << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}
