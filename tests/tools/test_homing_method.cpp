// The choices of the homing form, and the number that follows from them.
#include <gtest/gtest.h>

#include <set>

#include "tools/homing_method.h"

namespace servo::tools {
namespace {

using base::Language;
using enum HomingChoice;

// The mapping a second time, written as nested questions and not as a table.
int expected_index_method(const HomingChoices& c) {
    const bool positive = c.on(Option2);
    if (!c.on(Check1) && !c.on(Check2)) return positive ? 34 : 33;
    if (!c.on(Check2)) return c.on(Option5) ? 2 : 1;
    const bool polarity = c.on(Option6);
    if (!c.on(Check1)) {
        if (positive) return polarity ? 4 : 5;
        return polarity ? 3 : 6;
    }
    const bool positive_limit = c.on(Option5);
    if (positive) {
        if (polarity) return positive_limit ? 8 : 13;
        return positive_limit ? 10 : 11;
    }
    if (polarity) return positive_limit ? 7 : 14;
    return positive_limit ? 9 : 12;
}

int expected_switch_method(const HomingChoices& c) {
    const bool positive = c.on(Option16);
    const bool high = c.on(Option12);
    if (!c.on(Check5)) {
        if (positive) return high ? 20 : 21;
        return high ? 19 : 22;
    }
    if (c.on(Option15)) {
        if (positive) return high ? 24 : 26;
        return high ? 23 : 25;
    }
    if (positive) return high ? 29 : 27;
    return high ? 30 : 28;
}

int expected_special_method(const HomingChoices& c) {
    if (c.on(Option19)) return 35;
    if (c.on(Option20)) return c.on(Check7) ? -21 : -18;
    return c.on(Check7) ? -20 : -17;
}

int expected_method(const HomingChoices& c) {
    switch (c.Option1()) {
        case 0:
            return expected_index_method(c);
        case 1:
            return c.on(Option8) ? 18 : 17;
        case 2:
            return expected_switch_method(c);
        case 3:
            return expected_special_method(c);
        default:
            return 0;
    }
}

constexpr std::array kBoxes{Check1, Check2, Check3, Check5, Check6, Check7};

// Every state that can be clicked together: a bit for each box and each pair of options.
HomingChoices state_of(unsigned bits) {
    HomingChoices choices;
    for (const HomingChoice box : kBoxes) {
        if ((bits & 1U) != 0) choices.click(box);
        bits >>= 1;
    }
    // Pairs that take another one along come before it.
    for (const OptionPair& pair :
         {OptionPair{Option5, Option4}, OptionPair{Option2, Option3}, OptionPair{Option6, Option7},
          OptionPair{Option8, Option9}, OptionPair{Option11, Option10},
          OptionPair{Option12, Option13}, OptionPair{Option15, Option14},
          OptionPair{Option16, Option17}, OptionPair{Option19, Option18},
          OptionPair{Option20, Option21}}) {
        choices.click((bits & 1U) != 0 ? pair.first : pair.second);
        bits >>= 1;
    }
    return choices;
}

TEST(HomingMethod, EveryCombinationOfTheControlsGivesTheToldNumber) {
    std::set<std::vector<bool>> states;
    for (unsigned bits = 0; bits < 1U << 16U; ++bits) {
        HomingChoices choices = state_of(bits);
        if (bits < 4096) {
            std::vector<bool> flags;
            for (std::size_t i = 0; i < kHomingChoices; ++i)
                flags.push_back(choices.on(static_cast<HomingChoice>(i)));
            states.insert(flags);
        }
        for (int trigger = 0; trigger < kHomingTriggers; ++trigger) {
            choices.Option1_Click(trigger);
            ASSERT_EQ(Get_Home_Method(choices), expected_method(choices))
                << "trigger " << trigger << ", state " << bits;
        }
    }
    EXPECT_EQ(states.size(), 4096U) << "each pattern is a state of its own";
}

TEST(HomingMethod, TheChoicesGiveEachNumberOfTheTablesAndNoOther) {
    std::set<int> found;
    for (unsigned bits = 0; bits < 1U << 16U; ++bits) {
        HomingChoices choices = state_of(bits);
        for (int trigger = 0; trigger < kHomingTriggers; ++trigger) {
            choices.Option1_Click(trigger);
            found.insert(Get_Home_Method(choices));
        }
    }
    std::set<int> told{-21, -20, -18, -17, 0, 33, 34, 35};
    for (int method = 1; method <= 14; ++method)
        told.insert({method, method + 16});
    EXPECT_EQ(found, told);
    told.erase(0);
    const auto methods = homing_methods();
    EXPECT_EQ(std::set<int>(methods.begin(), methods.end()), told);
    EXPECT_EQ(methods.size(), told.size());
}

TEST(HomingMethod, OfEachPairExactlyOneOptionIsOn) {
    for (unsigned bits = 0; bits < 1U << 16U; bits += 7) {
        const HomingChoices choices = state_of(bits);
        for (const OptionPair& pair : homing_option_pairs())
            ASSERT_NE(choices.on(pair.first), choices.on(pair.second));
    }
    EXPECT_EQ(homing_option_pairs().size(), 10U);
}

TEST(HomingMethod, BoxesBeginOffAndTheFirstOptionsOn) {
    const HomingChoices choices;
    for (const HomingChoice box : kBoxes)
        EXPECT_FALSE(choices.on(box));
    for (const OptionPair& pair : homing_option_pairs())
        EXPECT_TRUE(choices.on(pair.first));
    EXPECT_EQ(choices.Option1(), 0);
    EXPECT_FALSE(choices.Text1_enabled());
    EXPECT_TRUE(choices.Frame2_enabled());
    EXPECT_FALSE(choices.Frame10_visible());
}

TEST(HomingMethod, TheHomeSwitchBoxTakesNoPart) {
    HomingChoices choices;
    choices.Option1_Click(kTriggerHomeSwitch);
    choices.click(Option13);
    choices.click(Option17);
    EXPECT_FALSE(choices.on(Check3));
    EXPECT_EQ(Get_Home_Method(choices), 22);
    choices.click(Check3);
    EXPECT_EQ(Get_Home_Method(choices), 22);
}

TEST(HomingMethod, OfTheLimitFrameOnlyTheLimitItselfCounts) {
    HomingChoices choices;
    choices.Option1_Click(kTriggerLimit);
    EXPECT_EQ(Get_Home_Method(choices), 18);
    choices.click(Check6);
    choices.click(Option10);
    EXPECT_EQ(Get_Home_Method(choices), 18);
    choices.click(Option9);
    choices.click(Option11);
    EXPECT_EQ(Get_Home_Method(choices), 17);
}

TEST(HomingMethod, ALimitAloneDisablesTheDirection) {
    HomingChoices choices;
    choices.click(Check1);
    EXPECT_FALSE(choices.Frame2_enabled());
    choices.click(Check2);
    EXPECT_TRUE(choices.Frame2_enabled());
    choices.click(Check1);
    EXPECT_TRUE(choices.Frame2_enabled());
    choices.click(Check2);
    EXPECT_TRUE(choices.Frame2_enabled());
}

TEST(HomingMethod, ALimitAloneTakesTheDirectionAlong) {
    HomingChoices choices;
    choices.click(Check1);
    choices.click(Option4);
    EXPECT_TRUE(choices.on(Option3));
    EXPECT_EQ(Get_Home_Method(choices), 1);
    choices.click(Option5);
    EXPECT_TRUE(choices.on(Option2));
    EXPECT_EQ(Get_Home_Method(choices), 2);
}

TEST(HomingMethod, WithAHomeSwitchTheLimitLeavesTheDirectionAlone) {
    HomingChoices choices;
    choices.click(Option4);
    EXPECT_TRUE(choices.on(Option2)) << "no limit in use";
    choices.click(Check1);
    choices.click(Check2);
    choices.click(Option4);
    EXPECT_TRUE(choices.on(Option2)) << "the home switch is in use as well";
    choices.click(Option3);
    choices.click(Option5);
    EXPECT_TRUE(choices.on(Option3));
}

// The click on the box itself moves no direction: only the next click on a limit does.
TEST(HomingMethod, TurningTheLimitOnLeavesTheDirectionWhereItStands) {
    HomingChoices choices;
    choices.click(Option3);
    choices.click(Check1);
    EXPECT_TRUE(choices.on(Option3));
    EXPECT_EQ(Get_Home_Method(choices), 2) << "the positive limit is chosen";
}

TEST(HomingMethod, TheLimitTakesItsDirectionAlong) {
    HomingChoices choices;
    choices.click(Option9);
    EXPECT_TRUE(choices.on(Option10));
    choices.click(Option8);
    EXPECT_TRUE(choices.on(Option11));
    choices.click(Option10);
    EXPECT_TRUE(choices.on(Option8)) << "not the other way round";
}

TEST(HomingMethod, TheMechanicalStopShowsItsFrameAndThePresentPositionHidesIt) {
    HomingChoices choices;
    choices.click(Option18);
    EXPECT_TRUE(choices.Frame10_visible());
    choices.click(Option19);
    EXPECT_FALSE(choices.Frame10_visible());
}

TEST(HomingMethod, OnlyTheLastTriggerOpensTheNumber) {
    HomingChoices choices;
    for (int trigger = 0; trigger < kHomingTriggers; ++trigger) {
        choices.Option1_Click(trigger);
        EXPECT_EQ(choices.Text1_enabled(), trigger == 4);
    }
    choices.Option1_Click(5);
    choices.Option1_Click(-1);
    EXPECT_EQ(choices.Option1(), 4) << "there is no such option";
}

TEST(HomingMethod, EveryNumberThatMayBeTyped) {
    std::set<int> told{-21, -20, -18, -17, 0, 33, 34, 35};
    for (int method = 1; method <= 14; ++method)
        told.insert({method, method + 16});
    for (int number = -128; number <= 127; ++number)
        EXPECT_EQ(is_typed_method(number), told.contains(number)) << number;
    for (const int refused : {15, 16, 31, 32, 36, -19})
        EXPECT_FALSE(is_typed_method(refused)) << refused;
    EXPECT_FALSE(is_typed_method(1.5));
    EXPECT_TRUE(is_typed_method(-0.0));
}

TEST(HomingMethod, PictureNamesForEveryNumber) {
    for (int number = -128; number <= 127; ++number) {
        const auto chinese = homing_picture_file(number, Language::kChinese);
        const auto english = homing_picture_file(number, Language::kEnglish);
        if (number == 0 || number == 35) {
            EXPECT_FALSE(chinese || english) << number;
        } else {
            EXPECT_EQ(chinese, std::to_string(number) + ".jpg");
            EXPECT_EQ(english, std::to_string(number) + "_EN.jpg");
        }
    }
    EXPECT_EQ(homing_picture_file(-18, Language::kChinese), "-18.jpg") << "with its minus sign";
}

std::string expected_description(int method) {
    if (method == 1 || method == 2 || method == 35) return std::to_string(method);
    if (method == 3 || method == 4) return "3-4";
    if (method == 5 || method == 6) return "5-6";
    if (method >= 7 && method <= 14) return "7-14";
    if (method >= 17 && method <= 30) return "17-30";
    if (method == 33 || method == 34) return "33-34";
    if (method == -18 || method == -17) return "-17-18";
    if (method == -21 || method == -20) return "-20-21";
    return {};
}

TEST(HomingMethod, DescriptionNamesForEveryNumber) {
    for (int number = -128; number <= 127; ++number) {
        const std::string name = expected_description(number);
        for (const HomingOrigin origin : {HomingOrigin::kChosen, HomingOrigin::kTyped}) {
            const bool gap = origin == HomingOrigin::kTyped && (number == -20 || number == -21);
            const auto chinese = homing_description_file(number, origin, Language::kChinese);
            const auto english = homing_description_file(number, origin, Language::kEnglish);
            if (name.empty() || gap) {
                EXPECT_FALSE(chinese || english) << number;
            } else {
                EXPECT_EQ(chinese, name + ".txt");
                EXPECT_EQ(english, name + "_EN.txt");
            }
        }
    }
}

// For the command that takes the drive's method over.
TEST(HomingMethod, ChoicesTakenFromAMethodGiveItAgain) {
    for (const int method : homing_methods()) {
        for (unsigned bits = 0; bits < 1U << 16U; bits += 97) {
            HomingChoices choices = state_of(bits);
            ASSERT_TRUE(choices.take(method));
            ASSERT_EQ(Get_Home_Method(choices), method);
            for (const OptionPair& pair : homing_option_pairs())
                ASSERT_NE(choices.on(pair.first), choices.on(pair.second));
        }
    }
    HomingChoices choices;
    for (const int number : {0, 15, 16, 31, 32, 36, -19, 127})
        EXPECT_FALSE(choices.take(number)) << number;
    EXPECT_EQ(choices, HomingChoices());
}

TEST(HomingMethod, TakenChoicesAgreeWithWhatClicksTakeAlong) {
    HomingChoices choices;
    ASSERT_TRUE(choices.take(1));
    EXPECT_TRUE(choices.on(Option3));
    ASSERT_TRUE(choices.take(17));
    EXPECT_TRUE(choices.on(Option10));
    ASSERT_TRUE(choices.take(-20));
    EXPECT_TRUE(choices.Frame10_visible());
}

}  // namespace
}  // namespace servo::tools
