// From the boxes to coefficients: the table with its refusals.
#include "tuner/filter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace servo::tuner {
namespace {

FilterSlot slot(int type, const char* p1, const char* p2, const char* p3, const char* p4) {
    return {true, type - 1, {p1, p2, p3, p4}};
}

void expect_coefficients(const FilterSlot& given, double a, double b, double c, double d) {
    const auto record = encode(given);
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->type, given.type + 1);
    const auto near = [](float value, double wanted) {
        EXPECT_NEAR(value, wanted, 1e-6 * std::max(1.0, std::abs(wanted)));
    };
    near(record->a, a);
    near(record->b, b);
    near(record->c, c);
    near(record->d, d);
}

TEST(FilterCoefficients, OfASlotThatIsNotInUseAreOff) {
    FilterSlot given = slot(2, "100", "0", "0", "0");  // would be refused
    given.use = false;
    EXPECT_EQ(encode(given), FilterRecord{});
}

TEST(FilterCoefficients, OfALowPassOfFirstOrder) {
    expect_coefficients(slot(1, "120.5", "7", "8", "9"), 120.5, 0, 0, 0);
}

TEST(FilterCoefficients, OfALowPassOfFirstOrderAreNeverRefused) {
    for (const char* text : {"0", "-5", "", "abc", "1E999", "1E300"})
        EXPECT_TRUE(encode(slot(1, text, "0", "0", "0")).has_value()) << text;
}

TEST(FilterCoefficients, OfALowPassOfSecondOrder) {
    expect_coefficients(slot(2, "200", "0.707", "8", "9"), 200, 0, 0.707, 0);
}

TEST(FilterCoefficients, OfANotch) {
    // 10^(20/40) is the root of ten, and the width is a tenth of the centre.
    expect_coefficients(slot(3, "500", "0.3", "50", "20"), 500, 0.3, 0.1 * std::sqrt(10.0),
                        0.1 / std::sqrt(10.0));
}

TEST(FilterCoefficients, OfANotchWithoutDepthAreAUnitGain) {
    const auto record = encode(slot(3, "500", "0.3", "50", "0"));
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->c, record->d);
    for (const int frequency : {1, 10, 499, 500, 501, 1000}) {
        float magnitude = 0;
        float phase = 1;
        Cal_Filter_Mag_Ph_u(static_cast<std::int16_t>(frequency), 3, record->a, record->b,
                            record->c, record->d, &magnitude, &phase);
        EXPECT_FLOAT_EQ(magnitude, 1.0F);
        EXPECT_NEAR(phase, 0.0F, 1e-6);
    }
}

TEST(FilterCoefficients, OfALeadLagOfFirstOrder) {
    // 10^(12/20) has the root 1.99526.
    expect_coefficients(slot(4, "1", "2", "12", "100"), 199.526231, 50.1187234, 0, 0);
}

TEST(FilterCoefficients, OfALeadLagWithoutGainAreItsCentreTwice) {
    for (const int type : {4, 5}) {
        const auto record = encode(slot(type, "0", "0.5", "0", "130"));
        ASSERT_TRUE(record.has_value());
        EXPECT_EQ(record->a, 130.0F);
        EXPECT_EQ(record->b, 130.0F);
    }
}

TEST(FilterCoefficients, OfALeadLagOfSecondOrder) {
    // The fourth root of 10^(12/20).
    expect_coefficients(slot(5, "1", "0.6", "12", "100"), 141.253754, 70.7945784, 1.2, 1.2);
}

TEST(FilterCoefficients, OfAMovingAverage) {
    expect_coefficients(slot(6, "8", "7", "0.0000625", "9"), 8, 0, 0.0000625, 0);
}

TEST(FilterCoefficients, ParametersAreReadAsLeadingNumbers) {
    expect_coefficients(slot(2, " 2.5E2Hz", "&H1", "", ""), 250, 0, 1, 0);
}

TEST(FilterCoefficients, RefusedSlots) {
    const struct {
        const char* why;
        FilterSlot slot;
    } refused[] = {
        {"second order without damping", slot(2, "100", "0", "0", "0")},
        {"second order with damping below 0", slot(2, "100", "-0.1", "0", "0")},
        {"notch at 0 Hz", slot(3, "0", "0.5", "10", "20")},
        {"notch so deep that its power is 0", slot(3, "100", "0.5", "10", "-20000")},
        {"notch so deep that its power is no number", slot(3, "100", "0.5", "10", "20000")},
        {"notch whose width over its centre is no single", slot(3, "1E-30", "0", "1E30", "20")},
        {"lead-lag at 0 Hz", slot(4, "0", "0", "6", "0")},
        {"lead-lag of second order at 0 Hz", slot(5, "0", "0.5", "6", "0")},
        {"lead-lag whose power is 0", slot(4, "0", "0", "-20000", "100")},
        {"lead-lag whose power is no number", slot(4, "0", "0", "20000", "100")},
        {"lead-lag of second order without damping", slot(5, "0", "0", "6", "100")},
        {"lead-lag of second order, damping below 0", slot(5, "0", "-1", "6", "100")},
        {"moving average of no samples", slot(6, "0", "0", "0.001", "0")},
        {"moving average of less than none", slot(6, "-1", "0", "0.001", "0")},
        {"moving average without sample time", slot(6, "4", "0", "0", "0")},
        {"moving average with sample time below 0", slot(6, "4", "0", "-0.001", "0")},
    };
    for (const auto& one : refused)
        EXPECT_FALSE(encode(one.slot).has_value()) << one.why;
}

TEST(FilterCoefficients, OfALeadLagWithACentreBelowZeroAreNotRefused) {
    expect_coefficients(slot(4, "0", "0", "0", "-50"), -50, -50, 0, 0);
}

TEST(EncodedSlots, AreInTheirOrder) {
    std::array<FilterSlot, kSlots> slots;
    for (std::size_t i = 0; i < slots.size(); ++i)
        slots[i] = slot(1, std::to_string(10 * (i + 1)).c_str(), "0", "0", "0");
    slots[2].use = false;
    const EncodedSlots encoded = encode(slots);
    EXPECT_EQ(encoded.refused, 0);
    EXPECT_EQ(encoded.records[0].a, 10.0F);
    EXPECT_EQ(encoded.records[2], FilterRecord{});
    EXPECT_EQ(encoded.records[5].a, 60.0F);
}

TEST(EncodedSlots, NameTheLastRefusedOneAndTryAll) {
    std::array<FilterSlot, kSlots> slots;
    slots[1] = slot(2, "100", "0", "0", "0");
    slots[3] = slot(6, "0", "0", "0", "0");
    slots[4] = slot(1, "70", "0", "0", "0");
    const EncodedSlots encoded = encode(slots);
    EXPECT_EQ(encoded.refused, 4);
    EXPECT_EQ(encoded.records[4].a, 70.0F);
}

TEST(LeadLagCorners, LieAroundTheirCentre) {
    const auto first = dealwith_leadlag(20, 100, 1);
    ASSERT_TRUE(first.has_value());
    EXPECT_NEAR(first->first, 100 * std::sqrt(10.0), 1e-9);
    EXPECT_NEAR(first->second, 100 / std::sqrt(10.0), 1e-9);
    const auto second = dealwith_leadlag(20, 100, 2);
    ASSERT_TRUE(second.has_value());
    EXPECT_NEAR(second->first, 100 * std::pow(10.0, 0.25), 1e-9);
    EXPECT_NEAR(second->second, 100 / std::pow(10.0, 0.25), 1e-9);
    EXPECT_FALSE(dealwith_leadlag(20, 0, 1).has_value());
}

TEST(NotchDampings, AreWidthOverCentreUpAndDownByHalfOfTheDepth) {
    const auto dampings = dealwith_notch(400, 100, 40);
    ASSERT_TRUE(dampings.has_value());
    EXPECT_NEAR(dampings->first, 2.5, 1e-12);
    EXPECT_NEAR(dampings->second, 0.025, 1e-12);
    EXPECT_FALSE(dealwith_notch(0, 100, 40).has_value());
}

TEST(FilterTypeTexts, NameTypesAndRows) {
    const struct {
        const char *chinese, *english;
        std::array<std::string_view, kParameters> labels;
    } rows[] = {
        {"一阶低通滤波器", "1st order LPF", {"Bandwidth", "", "", ""}},
        {"二阶低通滤波器", "2nd order LPF", {"Bandwidth", "Damping", "", ""}},
        {"陷波滤波器", "Notch Filter", {"Notch F", "Damping", "Notch Width", "Notch Depth"}},
        {"一阶超前滞后滤波器", "1st order leadlag filter", {"", "", "Cut Gain", "Phase Center"}},
        {"二阶超前滞后滤波器",
         "2nd order leadlag filter",
         {"", "Damping", "Cut Gain", "Phase Center"}},
        {"滑动平均滤波", "MAF", {"Order(Int)", "", "Ts(s)", ""}},
    };
    int position = 0;
    for (const auto& row : rows) {
        const FilterTypeTexts& texts = filter_type_texts(position++);
        EXPECT_EQ(texts.name.chinese, row.chinese);
        EXPECT_EQ(texts.name.english, row.english);
        EXPECT_EQ(texts.labels, row.labels) << row.english;
    }
    EXPECT_EQ(&filter_type_texts(99), &filter_type_texts(5));
}

}  // namespace
}  // namespace servo::tuner
