#include "formats/vectors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <type_traits>

namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

template <class Vector>
Vector normalized(Vector v) {
    v.normalize();
    return v;
}

template <class Vector, class Number>
Vector snapped(Vector v, Number tolerance) {
    v.snapToIntegerValues(tolerance);
    return v;
}

}  // namespace

TEST(Vectors, BeginAsZero) {
    EXPECT_EQ(BXVector2d(), BXVector2d(0, 0));
    EXPECT_EQ(BXVector2f(), BXVector2f(0, 0));
    EXPECT_EQ(BXVector3d(), BXVector3d(0, 0, 0));
    EXPECT_EQ(BXVector3f(), BXVector3f(0, 0, 0));
}

TEST(Vectors, HaveTheirZeroAndTheirAxes) {
    EXPECT_EQ(BXVector2d::m_zero, BXVector2d(0, 0));
    EXPECT_EQ(BXVector2f::m_zero, BXVector2f(0, 0));
    EXPECT_EQ(BXVector3d::m_zero, BXVector3d(0, 0, 0));
    EXPECT_EQ(BXVector3f::m_zero, BXVector3f(0, 0, 0));
    EXPECT_EQ(BXVector3f::m_axis[0], BXVector3f(1, 0, 0));
    EXPECT_EQ(BXVector3f::m_axis[1], BXVector3f(0, 1, 0));
    EXPECT_EQ(BXVector3f::m_axis[2], BXVector3f(0, 0, 1));
}

TEST(Vectors, ArePlainValues) {
    static_assert(std::is_trivially_copyable_v<BXVector2d> && sizeof(BXVector2d) == 16);
    static_assert(std::is_trivially_copyable_v<BXVector2f> && sizeof(BXVector2f) == 8);
    static_assert(std::is_trivially_copyable_v<BXVector3d> && sizeof(BXVector3d) == 24);
    static_assert(std::is_trivially_copyable_v<BXVector3f> && sizeof(BXVector3f) == 12);
    const BXVector3f v = BXVector2f(1, 2);
    EXPECT_EQ(v, BXVector3f(1, 2, 0));
    std::ostringstream out;
    out << v << BXVector2d(0.5, -1);
    EXPECT_EQ(out.str(), "(1, 2, 0)(0.5, -1)");
}

TEST(Vectors, ArePrintedWithTheirComponents) {
    std::ostringstream out;
    out << BXVector2f(1, 2) << BXVector2d(1.5, -2) << BXVector3f(1, 2, 3) << BXVector3d(0, 0.25, 1);
    EXPECT_EQ(out.str(), "(1, 2)(1.5, -2)(1, 2, 3)(0, 0.25, 1)");
}

// Required(R71)
TEST(Vectors, GiveOneForTheDoubleAndZeroForTheFloatVectorWithoutLength) {
    BXVector3d d;
    EXPECT_EQ(d.normalize(), 1.0);
    EXPECT_EQ(d, BXVector3d(0, 0, 0));
    d = BXVector3d(0, 9e-25, 0);
    EXPECT_EQ(d.normalize(), 1.0);
    EXPECT_EQ(d, BXVector3d(0, 9e-25, 0));
    d = BXVector3d(0, 1e-24, 0);
    EXPECT_EQ(d.normalize(), 1e-24) << "the bound is divided by";
    EXPECT_EQ(d, BXVector3d(0, 1, 0));
    d = BXVector3d(0, 1.1e-24, 0);
    EXPECT_EQ(d.normalize(), 1.1e-24);
    EXPECT_EQ(d, BXVector3d(0, 1, 0));
    BXVector3f f;
    EXPECT_EQ(f.normalize(), 0.0f);
    EXPECT_EQ(f, BXVector3f(0, 0, 0));
}

TEST(Vectors, OfTwoComponentsAreLeftAloneUpToAMillionth) {
    BXVector2f f(1e-7f, 0);
    EXPECT_EQ(f.normalize(), 0.0f);
    EXPECT_EQ(f, BXVector2f(1e-7f, 0));
    EXPECT_EQ(normalized(BXVector2f(0, -1e-6f)), BXVector2f(0, -1e-6f));
    EXPECT_EQ(normalized(BXVector2f(0, -2e-6f)), BXVector2f(0, -1));
    EXPECT_EQ(normalized(BXVector2d(1e-6, 0)), BXVector2d(1e-6, 0));
    EXPECT_EQ(normalized(BXVector2d(1.1e-6, 0)), BXVector2d(1, 0));
    f = BXVector2f(1e-7f, 0);
    f.normalize(5.0f);
    EXPECT_EQ(f, BXVector2f(1e-7f, 0));
    BXVector2d d(0, 1e-7);
    d.normalize(5.0);
    EXPECT_EQ(d, BXVector2d(0, 1e-7));
    for (const double length : {5e-7, 1e-6, 1.1e-6, 2e-6}) {
        const bool isScaled = length > 1e-6;
        d = BXVector2d(0, length);
        d.normalize(5.0);
        EXPECT_EQ(d, BXVector2d(0, isScaled ? 5.0 : length));
        f = BXVector2f(0, static_cast<float>(length));
        const float kept = f.y;
        f.normalize(5.0f);
        EXPECT_EQ(f, BXVector2f(0, isScaled ? 5.0f : kept));
    }
}

TEST(Vectors, AreDividedByTheirLength) {
    BXVector2f f(3, -4);
    EXPECT_EQ(f.normalize(), 5.0f);
    EXPECT_EQ(f, BXVector2f(3.0f / 5.0f, -4.0f / 5.0f));
    EXPECT_EQ(normalized(BXVector2d(-3, 4)), BXVector2d(-0.6, 0.8));
    BXVector3d d(2, 3, 6);
    EXPECT_DOUBLE_EQ(d.normalize(), 7.0);
    EXPECT_DOUBLE_EQ(d.x, 2.0 / 7.0);
    BXVector3f g(0, -3, 4);
    EXPECT_EQ(g.normalize(), 5.0f);
    EXPECT_EQ(g, BXVector3f(0, -3.0f / 5.0f, 4.0f / 5.0f));
    d = BXVector3d(0, 0, 1e-20);
    EXPECT_EQ(d.normalize(), 1e-20);
    EXPECT_EQ(d, BXVector3d(0, 0, 1));
}

TEST(Vectors, AreDividedByLengthsWhoseSquareNoFloatHolds) {
    EXPECT_EQ(normalized(BXVector3f(0, 1e30f, 0)), BXVector3f(0, 1, 0));
    EXPECT_EQ(normalized(BXVector3f(1e-30f, 0, 0)), BXVector3f(1, 0, 0));
    EXPECT_EQ(normalized(BXVector2f(0, 1e30f)), BXVector2f(0, 1));
    EXPECT_EQ(normalized(BXVector3d(1e200, 0, 0)), BXVector3d(1, 0, 0));
}

TEST(Vectors, AreScaledToALength) {
    BXVector2f f(3, 4);
    f.normalize(10.0f);
    EXPECT_EQ(f, BXVector2f(6, 8));
    BXVector2d d(-3, 4);
    d.normalize(2.5);
    EXPECT_EQ(d, BXVector2d(-1.5, 2));
    d.normalize(0.0);
    EXPECT_EQ(d, BXVector2d(0, 0));
}

// Required(R70)
TEST(Vectors, SnapToTheIntegerTowardZeroAlone) {
    EXPECT_EQ(snapped(BXVector2d(3.0004, 2.9996), 0.001), BXVector2d(3, 2.9996));
    EXPECT_EQ(snapped(BXVector2d(-3.0004, -2.9996), 0.001), BXVector2d(-3, -2.9996));
    EXPECT_EQ(snapped(BXVector2f(-0.005f, 1.999f), 0.01f), BXVector2f(0, 1.999f));
    EXPECT_FALSE(std::signbit(snapped(BXVector2f(-0.005f, 0), 0.01f).x));
    EXPECT_EQ(snapped(BXVector2d(3.5, 3.25), 0.5), BXVector2d(3.5, 3)) << "the bound is outside";
    EXPECT_EQ(snapped(BXVector2d(-3.5, -3.25), 0.5), BXVector2d(-3.5, -3));
    EXPECT_EQ(snapped(BXVector2d(3.5, 3.0), 0.0), BXVector2d(3.5, 3));
}

TEST(Vectors, LoseTheirPartAlongAnother) {
    BXVector3d d(1, 2, 3);
    EXPECT_TRUE(d.makeOrthogonalTo(BXVector3d(0, 1, 0)));
    EXPECT_EQ(d, BXVector3d(1, 0, 3));
    BXVector3f f(1, 2, 3);
    EXPECT_TRUE(f.makeOrthogonalTo(BXVector3f(0, 0, 2)));
    EXPECT_EQ(f, BXVector3f(1, 2, -9)) << "nothing normalises the other one";
    d = BXVector3d(1, 2, 3);
    EXPECT_TRUE(d.makeOrthogonalTo(BXVector3d(0.6, 0, -0.8)));
    EXPECT_NEAR(d.x, 1 + 1.8 * 0.6, 1e-12);
    EXPECT_EQ(d.y, 2);
    EXPECT_NEAR(d.z, 3 - 1.8 * 0.8, 1e-12);
    f = BXVector3f(1, 2, 3);
    EXPECT_TRUE(f.makeOrthogonalTo(BXVector3f(0.5f, -0.5f, 0.25f)));
    EXPECT_EQ(f, BXVector3f(1 - 0.125f, 2 + 0.125f, 3 - 0.0625f)) << "1 - 2 + 0.75 times";
    BXVector3f unit(0, 1, 0);
    EXPECT_TRUE(unit.makeOrthogonalTo(unit));
    EXPECT_EQ(unit, BXVector3f(0, 0, 0)) << "the other one is itself";
}

TEST(Vectors, FindAnOrthogonalOneByTheirSmallestComponent) {
    const auto of = [](float x, float y, float z) {
        BXVector3f out;
        BXVector3f(x, y, z).findOrthogonalVector(out);
        return out;
    };
    EXPECT_EQ(of(1, 0, 0), BXVector3f(0, 0, -1)) << "along y";
    EXPECT_EQ(of(3, 2, 1), BXVector3f(-2, 3, 0)) << "along z: x > y > z";
    EXPECT_EQ(of(3, 1, 2), BXVector3f(2, 0, -3)) << "along y: x > y, not y > z";
    EXPECT_EQ(of(2, 3, 1), BXVector3f(-3, 2, 0)) << "along z: not x > y, x > z";
    EXPECT_EQ(of(1, 2, 3), BXVector3f(0, -3, 2)) << "along x";
    EXPECT_EQ(of(-1, -1, -1), BXVector3f(0, 1, -1)) << "along x where all are the same";
    EXPECT_EQ(of(1, -3, 2), BXVector3f(0, -2, -3)) << "along x: the sign does not count";
    EXPECT_EQ(of(-3, 1, 2), BXVector3f(2, 0, 3)) << "along y";
    EXPECT_EQ(of(2, 3, -1), BXVector3f(-3, 2, 0)) << "along z";
    BXVector3d d(0, 0, 5);
    d.findOrthogonalVector(d);
    EXPECT_EQ(d, BXVector3d(0, -5, 0));
}

TEST(Vectors, FindAVectorThatIsOrthogonal) {
    std::mt19937 random(9);
    std::uniform_real_distribution<double> component(-10, 10);
    for (int i = 0; i < 1000; ++i) {
        const BXVector3d v(component(random), component(random), component(random));
        BXVector3d out;
        v.findOrthogonalVector(out);
        EXPECT_NEAR(v.x * out.x + v.y * out.y + v.z * out.z, 0.0, 1e-12);
        EXPECT_GT(std::fabs(out.x) + std::fabs(out.y) + std::fabs(out.z), 0.0);
    }
}

TEST(Vectors, SurviveWhatIsNoNumber) {
    BXVector3f v(kNaN, 1, 2), out;
    v.findOrthogonalVector(out);
    EXPECT_TRUE(std::isnan(v.normalize()));
    EXPECT_NE(v, v);
    BXVector3d far(INFINITY, 0, 0);
    EXPECT_EQ(far.normalize(), INFINITY);
    EXPECT_TRUE(std::isnan(far.x));
    EXPECT_EQ(far.y, 0.0);
    EXPECT_EQ(far.z, 0.0);
    BXVector2f w(kNaN, 3.0004f);
    w.snapToIntegerValues(0.001f);
    EXPECT_TRUE(std::isnan(w.x));
    EXPECT_EQ(w.y, 3.0f);
}
