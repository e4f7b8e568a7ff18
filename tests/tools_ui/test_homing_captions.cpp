// Every caption of the homing window, letter by letter.
#include <gtest/gtest.h>

#include <vector>

#include "homing_window_bench.h"

namespace servo::tools {
namespace {

using base::Language;

struct Caption {
    const char* control;
    const char* chinese;
    const char* english;
};

constexpr Caption kCaptions[] = {
    {"FrameA", "原点触发信号", "Homing Trigger"},
    {"Option1(0)", "使用编码器索引信号", "Use the Index Signal"},
    {"Option1(1)", "使用限位开关信号", "Use Limit Switch"},
    {"Option1(2)", "使用原点开关信号", "Use Home Switch"},
    {"Option1(3)", "其它特殊方式", "By Special Method"},
    {"Option1(4)", "无效模式", "Disabled"},
    {"Option2", "正方向", "Positive"},
    {"Option3", "负方向", "Negative"},
    {"Check1", "使用限位开关", "Use Limit Switch"},
    {"Option5", "正限位", "Positive"},
    {"Option4", "负限位", "Negative"},
    {"Check2", "使用原点开关", "Use Home Switch"},
    {"Option6", "正极性", "Positive"},
    {"Option7", "负极性", "Negative"},
    {"Option8", "正限位", "Positive Limit"},
    {"Option9", "负限位", "Negative Limit"},
    {"Check6", "使用限位开关", "Use Limit Switch"},
    {"Option11", "正方向", "Positive Dir."},
    {"Option10", "负方向", "Negative Dir."},
    {"Check3", "使用原点开关", "Use Home Switch"},
    {"Option12", "高电平", "High Level"},
    {"Option13", "低电平", "Low Level"},
    {"Check5", "使用限位开关", "Use Limit Switch"},
    {"Option15", "正限位", "Positive Limit"},
    {"Option14", "负限位", "Negative Limit"},
    {"Option16", "正方向", "Positive Dir."},
    {"Option17", "负方向", "Negative Dir."},
    {"Option19", "使用当前位置", "Use Current Position"},
    {"Option18", "使用机械限位", "Use Mechanical Limit"},
    {"Frame10", "机械限位配置", "Configure Mechanical Limit"},
    {"Option20", "正方向", "Positive"},
    {"Option21", "负方向", "Negative"},
    {"Check7", "使用反向后的索引信号", "Use the Index Signal after reverse"},
    {"Label1", "通过找原点电流触发", "Trig By Home Current"},
    {"LabelF", "预设原点模式", "Pre-Set Home Method"},
    {"LabelG", "实际原点模式", "Actual Home Method"},
    {"LabelI", "找原点速度", "Home speed"},
    {"LabelJ", "原点折返速度", "Home back speed"},
    {"LabelK", "找原点减速度", "Home ACC"},
    {"LabelL", "找原点电流", "Home Current"},
    {"LabelM", "原点偏移", "Home Offset"},
    {"LabelN", "原点屏蔽区域", "Home Blind"},
    {"LabelO", "原点偏移模式", "Home offset Method"},
    {"Check4", "上电自动找原点", "Start Homing When Power on"},
    {"Command1", "写入", "Write Down"},
};

class HomingCaptions : public ::testing::Test, protected test::HomingBench {
  protected:
    // Of a button its caption, not its state.
    std::string shown_caption(const char* name) {
        return qobject_cast<QAbstractButton*>(&control<>(name)) != nullptr ? caption(name)
                                                                           : text(name);
    }
    std::vector<std::string> items(const char* name) {
        std::vector<std::string> found;
        const auto& list = control<QComboBox>(name);
        for (int i = 0; i < list.count(); ++i)
            found.push_back(list.itemText(i).toStdString());
        return found;
    }
};

TEST_F(HomingCaptions, AreAsToldInBothLanguagesTimeAndAgain) {
    for (const Language each : {Language::kEnglish, Language::kChinese, Language::kEnglish}) {
        walk(each);
        for (const auto& [name, chinese, english] : kCaptions)
            EXPECT_EQ(shown_caption(name), each == Language::kChinese ? chinese : english) << name;
    }
}

TEST_F(HomingCaptions, ListsHoldTheirItems) {
    EXPECT_EQ(items("Combo1"),
              (std::vector<std::string>{"0:Run to Home -Offset", "1:Run to Trig position"}));
    EXPECT_EQ(items("Combo2"), (std::vector<std::string>{"0:0 Rev", "1:0.25 Rev", "2:0.5 Rev"}));
    walk(Language::kChinese);
    EXPECT_EQ(items("Combo1"),
              (std::vector<std::string>{"0:运行到 原点-偏移", "1:运行到触发位置"}));
    EXPECT_EQ(items("Combo2"), (std::vector<std::string>{"0:0 Rev", "1:0.25 Rev", "2:0.5 Rev"}));
}

}  // namespace
}  // namespace servo::tools
