#include "app/shell_layout.h"

#include <gtest/gtest.h>

namespace servo::app {
namespace {

TEST(Background, ItsSizeClassFollowsTheWidthOfTheFrame) {
    EXPECT_EQ(background_class(0), 0);
    EXPECT_EQ(background_class(699), 0);
    EXPECT_EQ(background_class(700), 1);
    EXPECT_EQ(background_class(999), 1);
    EXPECT_EQ(background_class(1000), 2);
    EXPECT_EQ(background_class(1499), 2);
    EXPECT_EQ(background_class(1500), 3);
}

TEST(Background, EachClassFitsIntoItsFrameAndIsLarger) {
    EXPECT_LE(background_size(0).width, 700);
    EXPECT_LE(background_size(1).width, 700);
    EXPECT_LE(background_size(2).width, 1000);
    EXPECT_LE(background_size(3).width, 1500);
    for (int i = 1; i <= 3; ++i)
        EXPECT_GT(background_size(i).width, background_size(i - 1).width);
}

TEST(Icons, StandSideBySideAtTheBottom) {
    const auto places = icon_places({500, 300}, {{200, 30}, {200, 30}});
    EXPECT_EQ(places, (std::vector<Place>{{0, 270}, {200, 270}}));
}

TEST(Icons, TheNextRowStandsAbove) {
    const auto places = icon_places({500, 300}, {{200, 30}, {200, 30}, {200, 30}});
    EXPECT_EQ(places[2], (Place{0, 240}));
}

TEST(Icons, AnAreaNarrowerThanAnIconTakesOneInEachRow) {
    const auto places = icon_places({100, 300}, {{200, 30}, {200, 30}});
    EXPECT_EQ(places, (std::vector<Place>{{0, 270}, {0, 240}}));
}

TEST(Cascade, StepsDownAndBeginsAnewAtTheEdge) {
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 0), (Place{0, 0}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 1), (Place{28, 28}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 10), (Place{280, 280}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 11), (Place{0, 0}));
    EXPECT_EQ(cascade_place({300, 200}, {600, 400}, 5), (Place{0, 0}));
}

TEST(FirstSize, LeavesRoomForTheWindowsBehind) {
    EXPECT_EQ(first_size({1180, 700}, {880, 900}), (Size{880, 588}));
    EXPECT_EQ(first_size({1180, 700}, {300, 200}), (Size{300, 200}));
    EXPECT_EQ(first_size({200, 100}, {880, 700}), (Size{440, 350}));
}

TEST(Dialogs, StandAtTheRightAndInsideOfTheArea) {
    EXPECT_EQ(dialog_place({1180, 700}, {350, 240}, 0), (Place{806, 24}));
    EXPECT_EQ(dialog_place({1180, 700}, {350, 240}, 1), (Place{778, 52}));
    EXPECT_EQ(dialog_place({300, 200}, {350, 240}, 1), (Place{0, 0}));
}

}  // namespace
}  // namespace servo::app
