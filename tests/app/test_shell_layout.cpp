#include "app/shell_layout.h"

#include <gtest/gtest.h>

#include <cstdlib>

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

TEST(Cascade, StepsDownAndBeginsAnewAtTheEdgeFurtherRight) {
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 0), (Place{0, 0}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 1), (Place{28, 28}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 10), (Place{280, 280}));
    EXPECT_EQ(cascade_place({1000, 700}, {600, 400}, 11), (Place{112, 0}));
    EXPECT_EQ(cascade_place({300, 200}, {600, 400}, 5), (Place{0, 0}));
}

TEST(FirstSize, LeavesRoomForTheWindowsBehind) {
    EXPECT_EQ(first_size({1180, 700}, {880, 900}), (Size{880, 588}));
    EXPECT_EQ(first_size({1180, 700}, {300, 200}), (Size{300, 200}));
    EXPECT_EQ(first_size({200, 100}, {880, 700}), (Size{440, 350}));
}

TEST(FirstSize, AWindowThatIsAPictureMayHaveTheWholeArea) {
    EXPECT_EQ(whole_size({1280, 709}, {1240, 748}), (Size{1240, 709}));
    EXPECT_EQ(whole_size({1920, 1000}, {1240, 748}), (Size{1240, 748}));
    EXPECT_EQ(whole_size({200, 100}, {880, 700}), (Size{440, 350}));
}

TEST(Cascade, NoTwoPagesHideEachOthersTitleBar) {
    std::vector<Place> places;
    for (int i = 0; i < 20; ++i) {
        const Place place = cascade_place({1280, 690}, {884, 578}, i);
        for (const Place& other : places)
            EXPECT_TRUE(std::abs(other.x - place.x) >= 28 || std::abs(other.y - place.y) >= 28)
                << i;
        places.push_back(place);
        EXPECT_LE(place.x + 884, 1280);
        EXPECT_LE(place.y + 578, 690);
    }
}

TEST(Cascade, AClosedWindowsPlaceIsUsedAgain) {
    EXPECT_EQ(free_place({1000, 700}, {600, 400}, {}), (Place{0, 0}));
    EXPECT_EQ(free_place({1000, 700}, {600, 400}, {{0, 0}, {56, 56}}), (Place{28, 28}));
    EXPECT_EQ(free_place({1000, 700}, {600, 400}, {{3, 5}}), (Place{28, 28}));
    EXPECT_EQ(free_place({600, 400}, {600, 400}, {{0, 0}, {0, 0}}), (Place{0, 0}));
}

TEST(Dialogs, StandInTheMiddleAndInsideOfTheArea) {
    EXPECT_EQ(dialog_place({1180, 700}, {350, 240}, 0), (Place{415, 153}));
    EXPECT_EQ(dialog_place({1180, 700}, {350, 240}, 1), (Place{443, 181}));
    EXPECT_EQ(dialog_place({1180, 700}, {350, 240}, 4), (Place{415, 153}));
    EXPECT_EQ(dialog_place({300, 200}, {350, 240}, 1), (Place{0, 0}));
}

TEST(RememberedPlace, InsideOfTheAreaStays) {
    const WindowPlace place{{100, 50}, {600, 400}, PlaceState::kMinimized};
    EXPECT_EQ(into_view({1000, 700}, place), place);
}

TEST(RememberedPlace, OffTheFrameComesBackIntoView) {
    EXPECT_EQ(into_view({1000, 700}, {{5000, 9000}, {600, 400}}),
              (WindowPlace{{400, 300}, {600, 400}}));
    EXPECT_EQ(into_view({1000, 700}, {{-300, -20}, {600, 400}}), (WindowPlace{{0, 0}, {600, 400}}));
}

TEST(RememberedPlace, IsNoLargerThanTheFrame) {
    EXPECT_EQ(into_view({500, 300}, {{10, 10}, {600, 400}}), (WindowPlace{{0, 0}, {500, 300}}));
    EXPECT_EQ(into_view({0, 0}, {{10, 10}, {600, 400}}), (WindowPlace{{0, 0}, {1, 1}}));
}

TEST(Tiles, FillTheAreaWithoutOverlap) {
    const Size area{1000, 701};
    for (int count = 1; count <= 12; ++count) {
        const auto tiles = tile_places(area, std::vector<Size>(static_cast<std::size_t>(count)));
        ASSERT_EQ(tiles.size(), static_cast<std::size_t>(count));
        int covered = 0;
        for (const WindowPlace& tile : tiles) {
            covered += tile.size.width * tile.size.height;
            EXPECT_LE(tile.corner.x + tile.size.width, area.width);
            EXPECT_LE(tile.corner.y + tile.size.height, area.height);
        }
        EXPECT_EQ(covered, area.width * area.height) << count;
    }
    EXPECT_TRUE(tile_places(area, {}).empty());
}

TEST(Tiles, ARowWithFewerWindowsHasWiderOnes) {
    EXPECT_EQ(tile_places({900, 600}, std::vector<Size>(3)),
              (std::vector<WindowPlace>{
                  {{0, 0}, {450, 300}}, {{450, 0}, {450, 300}}, {{0, 300}, {900, 300}}}));
}

TEST(Tiles, NoWindowIsSmallerThanItsSmallestSize) {
    const Size page{620, 150};
    const Size browser{820, 300};
    const auto tiles = tile_places({1280, 810}, {page, page, page, browser, page});
    EXPECT_EQ(tiles, (std::vector<WindowPlace>{{{0, 0}, {640, 170}},
                                               {{640, 0}, {640, 170}},
                                               {{0, 170}, {1280, 170}},
                                               {{0, 340}, {1280, 300}},
                                               {{0, 640}, {1280, 170}}}));
    // One that needs more than its share leaves the rest to the others.
    const auto uneven = tile_places({1280, 709}, {browser, {300, 100}, page, page});
    EXPECT_EQ(uneven.at(0), (WindowPlace{{0, 0}, {820, 354}}));
    EXPECT_EQ(uneven.at(1), (WindowPlace{{820, 0}, {460, 354}}));
}

TEST(Tiles, WindowsThatFindNoRoomOverlapWithEachTitleInView) {
    const auto tiles = tile_places({500, 300}, std::vector<Size>(4, Size{400, 120}));
    EXPECT_EQ(tiles, (std::vector<WindowPlace>{{{0, 0}, {500, 120}},
                                               {{0, 60}, {500, 120}},
                                               {{0, 120}, {500, 120}},
                                               {{0, 180}, {500, 120}}}));
    // A high one in the middle takes no room from those below it.
    const auto uneven = tile_places({500, 400}, {{400, 120}, {400, 200}, {400, 120}, {400, 120}});
    EXPECT_EQ(uneven.at(1).corner.y, 93);
    EXPECT_EQ(uneven.at(3), (WindowPlace{{0, 280}, {500, 120}}));
    // Larger than the area: its left upper corner with the title is what can be seen.
    EXPECT_EQ(tile_places({500, 300}, {{800, 400}}),
              (std::vector<WindowPlace>{{{0, 0}, {800, 400}}}));
}

}  // namespace
}  // namespace servo::app
