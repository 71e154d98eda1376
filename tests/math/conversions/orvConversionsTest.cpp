#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "math/conversions/orvConversions.h"
#include "math/orvMathExpect.h"

namespace
{

using namespace orv;
using orvtest::expectNear;
using orvtest::expectSameRotation;

struct OrderCase
{
    EulerOrder::Value order;
    Quaternion (*toQuaternionOfOrder)(const EulerAngles&);
    Quaternion (*pivotOfOrder)(Angle, Angle, Angle);
    Axis::Value axes[3];
    bool even;
};

const OrderCase kOrders[] = {
    {EulerOrder::XYZ, toQuaternionXYZ, pivotXYZ_toQuaternion, {Axis::X, Axis::Y, Axis::Z}, true},
    {EulerOrder::XZY, toQuaternionXZY, pivotXZY_toQuaternion, {Axis::X, Axis::Z, Axis::Y}, false},
    {EulerOrder::YXZ, toQuaternionYXZ, pivotYXZ_toQuaternion, {Axis::Y, Axis::X, Axis::Z}, false},
    {EulerOrder::YZX, toQuaternionYZX, pivotYZX_toQuaternion, {Axis::Y, Axis::Z, Axis::X}, true},
    {EulerOrder::ZXY, toQuaternionZXY, pivotZXY_toQuaternion, {Axis::Z, Axis::X, Axis::Y}, true},
    {EulerOrder::ZYX, toQuaternionZYX, pivotZYX_toQuaternion, {Axis::Z, Axis::Y, Axis::X}, false},
};

Vector3 unit(int axis)
{
    Vector3 v;
    v[axis] = 1.0f;
    return v;
}

class ConversionsTest : public ::testing::Test
{
protected:
    float draw(float from, float to) { return std::uniform_real_distribution<float>(from, to)(_engine); }
    Quaternion drawRotation()
    {
        Quaternion q(draw(-1.0f, 1.0f), draw(-1.0f, 1.0f), draw(-1.0f, 1.0f), draw(-1.0f, 1.0f));
        q.normalizeSelf();
        return q;
    }

    std::mt19937 _engine{20240611u};
};

TEST_F(ConversionsTest, AxisAngleUsesTheHalfAngleAndTheAxisAsItStands)
{
    const Quaternion q = toQuaternion(AxisAngle(Vector3(0.0f, 0.0f, 2.0f), 1.0f));
    EXPECT_FLOAT_EQ(2.0f * std::sin(0.5f), q.z);
    EXPECT_FLOAT_EQ(std::cos(0.5f), q.w);

    AxisAngle back;
    const Vector3 axis = Vector3(1.0f, -2.0f, 0.5f).computeNormalize();
    fromQuaternion(back, toQuaternion(AxisAngle(axis, 2.5f)));
    expectNear(axis, back.getAxis(), 1.0e-5f);
    EXPECT_NEAR(2.5f, back.getAngle(), 1.0e-5f);
}

TEST_F(ConversionsTest, PivotsAndEvenEulerOrdersComposeInTheOrderOfTheirName)
{
    const float angles[3] = {0.3f, -1.1f, 2.0f};
    const EulerAngles e(0.4f, -0.9f, 1.3f);
    for (const OrderCase& c : kOrders)
    {
        const Quaternion pivots = toQuaternion(angles[c.axes[0]], c.axes[0]) *
                                  toQuaternion(angles[c.axes[1]], c.axes[1]) *
                                  toQuaternion(angles[c.axes[2]], c.axes[2]);
        expectSameRotation(pivots, c.pivotOfOrder(angles[0], angles[1], angles[2]), 1.0e-6f);
        const Quaternion q = c.toQuaternionOfOrder(e);
        EXPECT_EQ(q, toQuaternion(e, c.order));
        if (c.even)
        {
            const Quaternion product = toQuaternion(e.heading, c.axes[0]) * toQuaternion(e.attitude, c.axes[1]) *
                                       toQuaternion(e.bank, c.axes[2]);
            EXPECT_NEAR(0.0f, Quaternion::angularDistance(product, q), 1.0e-3f) << "order " << c.order;
        }
    }
    // Odd orders are not products: they are the XYZ formula with its slots swapped.
    const Quaternion xyz = toQuaternionXYZ(e);
    EXPECT_EQ(Quaternion(xyz.z, xyz.y, xyz.x, xyz.w), toQuaternionZYX(e));
    EXPECT_EQ(Quaternion(xyz.x, xyz.z, xyz.y, xyz.w), toQuaternionXZY(e));
    EXPECT_EQ(Quaternion(xyz.y, xyz.x, xyz.z, xyz.w), toQuaternionYXZ(e));
}

TEST_F(ConversionsTest, EulerAnglesRoundTripInEveryOrderAndKeepTheRotationAtThePoles)
{
    for (const OrderCase& c : kOrders)
    {
        EulerAngles back;
        for (int i = 0; i < 40; ++i)
        {
            const EulerAngles e(draw(-3.1f, 3.1f), draw(-1.5f, 1.5f), draw(-3.1f, 3.1f));
            ASSERT_EQ(EulerPolesStatus::NONE, fromQuaternion(back, c.toQuaternionOfOrder(e), c.order));
            EXPECT_NEAR(e.heading, back.heading, 2.0e-4f) << "order " << c.order;
            EXPECT_NEAR(e.attitude, back.attitude, 2.0e-4f) << "order " << c.order;
            EXPECT_NEAR(e.bank, back.bank, 2.0e-4f) << "order " << c.order;
        }
        // At a pole heading and bank turn about one axis: the bank goes to 0 and the heading carries both.
        const Quaternion north = c.toQuaternionOfOrder(EulerAngles(0.3f, kHalfPi, 0.5f));
        ASSERT_EQ(EulerPolesStatus::NORTH, fromQuaternion(back, north, c.order));
        EXPECT_EQ(0.0f, back.bank);
        expectSameRotation(north, c.toQuaternionOfOrder(back), 1.0e-5f);
        const Quaternion south = c.toQuaternionOfOrder(EulerAngles(0.3f, -kHalfPi, 0.5f));
        ASSERT_EQ(EulerPolesStatus::SOUTH, fromQuaternion(back, south, c.order));
        expectSameRotation(south, c.toQuaternionOfOrder(back), 1.0e-5f);
    }
}

TEST_F(ConversionsTest, MatrixColumnsAreTheImagesOfTheAxesAndTheRoundTripCoversEveryBranch)
{
    // Random rotations mostly have a positive trace; the half turns reach the three diagonal branches.
    Quaternion cases[24] = {toQuaternion(kPi, Axis::X), toQuaternion(kPi, Axis::Y), toQuaternion(kPi, Axis::Z),
                            toQuaternion(AxisAngle(Vector3(0.6f, 0.8f, 0.0f), 2.9f))};
    for (int i = 4; i < 24; ++i)
    {
        cases[i] = drawRotation();
    }
    for (const Quaternion& q : cases)
    {
        const RotationMatrix m = toRotationMatrix(q);
        // Both paths share their terms, so they agree to the bit.
        for (int axis = 0; axis < 3; ++axis)
        {
            EXPECT_EQ(q * unit(axis), m.getColumn(axis));
        }
        expectSameRotation(q, toQuaternion(m), 2.0e-6f);
    }
}

TEST_F(ConversionsTest, AxisPairConversionsKeepTheCapitalAxisExactly)
{
    struct PairCase
    {
        Quaternion (*convert)(const Vector3&, const Vector3&);
        void (*convertOut)(const Vector3&, const Vector3&, Quaternion&);
        int kept;
        int hinted;
    };
    const PairCase cases[] = {{Axis_Zx_toQuaternion, Axis_Zx_toQuaternion, Axis::Z, Axis::X},
                              {Axis_Zy_toQuaternion, Axis_Zy_toQuaternion, Axis::Z, Axis::Y},
                              {Axis_Xy_toQuaternion, Axis_Xy_toQuaternion, Axis::X, Axis::Y},
                              {Axis_Xz_toQuaternion, Axis_Xz_toQuaternion, Axis::X, Axis::Z},
                              {Axis_Yx_toQuaternion, Axis_Yx_toQuaternion, Axis::Y, Axis::X},
                              {Axis_Yz_toQuaternion, Axis_Yz_toQuaternion, Axis::Y, Axis::Z}};
    const Vector3 kept = Vector3(0.2f, -0.4f, 0.9f).computeNormalize();
    // Not normal to kept, nor unit: only its plane with kept counts.
    const Vector3 hint(2.0f, 1.0f, 1.0f);
    for (const PairCase& c : cases)
    {
        const Quaternion q = c.convert(kept, hint);
        expectNear(kept, q * unit(c.kept), 2.0e-5f);
        const Vector3 hintedImage = q * unit(c.hinted);
        EXPECT_NEAR(0.0f, dotProduct(hintedImage, crossProduct(kept, hint)), 2.0e-5f);
        EXPECT_GT(dotProduct(hintedImage, hint), 0.0f);
        Quaternion out;
        c.convertOut(kept, hint, out);
        EXPECT_EQ(q, out);
    }
}

TEST_F(ConversionsTest, InterpolationTakesTheShortWayAndDoesNotClampTheFactor)
{
    const Quaternion a = toQuaternion(0.2f, Axis::Z);
    const Quaternion b = toQuaternion(1.0f, Axis::Z);
    Quaternion out;
    interpolate_noFactorRangeCheck(out, a, -b, 0.5f);
    expectSameRotation(toQuaternion(0.6f, Axis::Z), out, 1.0e-6f);
    EXPECT_GT(out.w, 0.0f);
    interpolate_noFactorRangeCheck(out, a, -a, 0.5f);
    expectSameRotation(a, out, 1.0e-6f);
    EXPECT_FALSE(out.isNull());
    interpolate_noFactorRangeCheck(out, a, b, 2.0f);
    EXPECT_GT(Quaternion::angularDistance(a, out), 1.0f);
}

} // namespace
