// Pictures and descriptions of the homing methods as they lie beside the program.
#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <filesystem>
#include <map>
#include <set>

#include "base/file.h"
#include "base/gbk.h"
#include "data/tools/homing_description.h"
#include "data/tools/homing_drawing.h"
#include "tools/homing_method.h"
#include "tools/homing_travel.h"
#include "tools/homing_travel_texts.h"

namespace servo::tools {
namespace {

using base::Language;
constexpr std::array kLanguages{Language::kChinese, Language::kEnglish};
constexpr int kScale = 2;  // pixels for each unit of a drawing

std::filesystem::path folder() {
    return std::filesystem::path(SERVO_BIN_DIR) / "HomingPics";
}

QImage picture(const std::string& name) {
    return QImage(QString::fromStdString((folder() / name).string()));
}

std::vector<int> pictured() {
    std::vector<int> methods;
    for (const int method : homing_methods())
        if (homing_picture_file(method, Language::kEnglish)) methods.push_back(method);
    return methods;
}

bool close_to(QRgb pixel, int red, int green, int blue) {
    return std::abs(qRed(pixel) - red) + std::abs(qGreen(pixel) - green) +
               std::abs(qBlue(pixel) - blue) <
           60;
}

// A line of few pixels: its neighbours count, too.
bool touches_ring(const QImage& image, int x, int y) {
    for (int dx = -1; dx <= 1; ++dx)
        for (int dy = -1; dy <= 1; ++dy)
            if (close_to(image.pixel(x + dx, y + dy), 0xb7, 0x23, 0x2b)) return true;
    return false;
}

TEST(HomingPictures, OneForEachMethodAndLanguage) {
    ASSERT_EQ(pictured().size(), 34U);
    for (const int method : pictured())
        for (const Language language : kLanguages) {
            const auto name = homing_picture_file(method, language);
            const QImage image = picture(*name);
            EXPECT_EQ(image.size(), QSize(1280, 720)) << *name;
        }
    EXPECT_FALSE(std::filesystem::exists(folder() / "0.jpg"));
    EXPECT_FALSE(std::filesystem::exists(folder() / "35.jpg"));
}

TEST(HomingPictures, NoneIsBlankAndTheGroundIsLight) {
    for (const int method : pictured())
        for (const Language language : kLanguages) {
            const QImage image = picture(*homing_picture_file(method, language));
            int light = 0;
            int dark = 0;
            int all = 0;
            for (int y = 0; y < image.height(); y += 2)
                for (int x = 0; x < image.width(); x += 2) {
                    const int grey = qGray(image.pixel(x, y));
                    light += grey > 240 ? 1 : 0;
                    dark += grey < 150 ? 1 : 0;
                    ++all;
                }
            EXPECT_GT(light, all * 85 / 100) << method;
            EXPECT_GT(dark, all / 100) << method;
        }
}

// Where the drawing has the home position there is a ring of its colour, with a light middle.
TEST(HomingPictures, EveryHomePositionIsCircled) {
    for (const int method : pictured())
        for (const Language language : kLanguages) {
            const HomingTravel& travel = *find_homing_travel(method);
            const data::Drawing drawing = data::draw_homing(travel, language);
            const QImage image = picture(*homing_picture_file(method, language));
            ASSERT_EQ(drawing.home_circles.size(), travel.start_count);
            for (const data::Point& circle : drawing.home_circles) {
                int ring = 0;
                for (const double angle : {0.4, 0.9, 2.2, 2.7, 3.6, 4.2, 5.3, 5.8}) {
                    const double x = circle.x + data::kHomeCircleRadius * std::cos(angle);
                    const double y = circle.y + data::kHomeCircleRadius * std::sin(angle);
                    if (touches_ring(image, qRound(x * kScale), qRound(y * kScale))) ++ring;
                }
                EXPECT_EQ(ring, 8) << method;
            }
        }
}

// The end of each path stands over the edge or pulse that the method ends at.
TEST(HomingPictures, CirclesOfAMethodStandOverOnePlace) {
    for (const int method : pictured()) {
        const HomingTravel& travel = *find_homing_travel(method);
        const data::Drawing drawing = data::draw_homing(travel, Language::kEnglish);
        std::set<double> places;
        for (const data::Point& circle : drawing.home_circles)
            places.insert(circle.x);
        EXPECT_EQ(places.size(), 1U) << method;
        const auto steps =
            travel_from(homing_axis(travel), homing_legs(travel.zones().front().legs),
                        start_position(travel, travel.zones().front().zone));
        EXPECT_NEAR((*places.begin() - 124) / (612 - 124) * 1000, steps->back().event, 0.01);
        EXPECT_EQ(drawing.start_dots.size(), travel.start_count);
    }
}

TEST(HomingPictures, EverythingStaysInsideOfThePicture) {
    for (const int method : pictured())
        for (const Language language : kLanguages) {
            const data::Drawing drawing = data::draw_homing(*find_homing_travel(method), language);
            const auto inside = [&](double x, double y) {
                EXPECT_TRUE(x >= 0 && x <= drawing.width && y >= 0 && y <= drawing.height)
                    << method << ": " << x << ", " << y;
            };
            for (const data::Shape& shape : drawing.shapes) {
                if (const auto* stroke = std::get_if<data::Stroke>(&shape)) {
                    for (const data::Point& point : stroke->points)
                        inside(point.x, point.y);
                } else if (const auto* disc = std::get_if<data::Disc>(&shape)) {
                    inside(disc->centre.x - disc->radius, disc->centre.y - disc->radius);
                    inside(disc->centre.x + disc->radius, disc->centre.y + disc->radius);
                } else if (const auto* words = std::get_if<data::Words>(&shape)) {
                    inside(words->x, words->y);
                    inside(words->x + words->width, words->y + words->height);
                }
            }
        }
}

TEST(HomingPictures, NoTwoAreAlike) {
    std::map<std::string, std::string> seen;
    for (const int method : pictured())
        for (const Language language : kLanguages) {
            const std::string name = *homing_picture_file(method, language);
            const auto bytes = base::read_file(folder() / name);
            ASSERT_TRUE(bytes) << name;
            EXPECT_TRUE(bytes->starts_with("\xFF\xD8\xFF")) << name;
            const auto [place, fresh] = seen.emplace(*bytes, name);
            EXPECT_TRUE(fresh) << name << " and " << place->second;
        }
}

TEST(HomingDescriptions, EveryMethodHasOneInBothLanguages) {
    for (const int method : homing_methods())
        for (const Language language : kLanguages) {
            const auto name = homing_description_file(method, HomingOrigin::kChosen, language);
            ASSERT_TRUE(name) << method;
            const auto bytes = base::read_file(folder() / *name);
            ASSERT_TRUE(bytes) << *name;
            const std::string text = base::gbk_to_utf8(*bytes);
            const std::string number = std::to_string(method);
            const std::string line =
                (language == Language::kChinese ? "模式 " + number + "：原点为"
                                                : "Method " + number + ": home is ") +
                home_text(*find_homing_travel(method), language);
            EXPECT_NE(text.find(line), std::string::npos) << *name << ": " << line;
            EXPECT_EQ(text.find("{methods}"), std::string::npos) << *name;
            EXPECT_EQ(text.find('?'), std::string::npos) << *name << " lost a character";
            EXPECT_EQ(text.find("\xEF\xBF\xBD"), std::string::npos) << *name << " is no GBK";
            EXPECT_TRUE(text.ends_with("\r\n")) << *name;
        }
}

TEST(HomingDescriptions, NoFileLiesThereForNobody) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder())) {
        const std::string name = entry.path().filename();
        if (!name.ends_with(".txt")) continue;
        EXPECT_TRUE(data::described_methods(name)) << name;
        ++files;
    }
    EXPECT_EQ(files, 20);
    EXPECT_FALSE(data::described_methods("15.txt"));
    EXPECT_FALSE(data::described_methods("17-30.jpg"));
}

TEST(HomingDescriptions, AFileIsForItsMethods) {
    const auto both = data::described_methods("-20-21_EN.txt");
    ASSERT_TRUE(both);
    EXPECT_EQ(both->methods, (std::vector<int>{-21, -20}));
    EXPECT_EQ(both->language, Language::kEnglish);
    EXPECT_EQ(data::described_methods("17-30.txt")->methods.size(), 14U);
}

TEST(HomingDescriptions, OnlyAWholeLineStandsForTheMethods) {
    const data::DescribedMethods one{{33}, Language::kEnglish};
    EXPECT_EQ(data::fill_description("a {methods}\n{methods}\nb", one),
              "a {methods}\nMethod 33: home is the first index pulse in the negative "
              "direction.\nb\n");
    EXPECT_EQ(data::fill_description("", one), "");
}

}  // namespace
}  // namespace servo::tools
