// The form: buttons, files, messages, the page of the live index.
#include <gtest/gtest.h>

#include "pos_flow_bench.h"
#include "tools/position_table_register.h"

namespace servo::tools {
namespace {

using Boxes = std::vector<std::pair<std::string, std::string>>;

TEST(PosFlowLoad, BuildsClearedGridsAndReadsItsFiles) {
    PosFlowForm bench;
    EXPECT_EQ(bench.grids(), [] {
        PositionGrids grids = cleared_grids();
        return grids;
    }());
    EXPECT_TRUE(bench.form.data().list.has_value());
    EXPECT_EQ(bench.form.name(), "PosFlow");
    EXPECT_TRUE(bench.form.custom());
    EXPECT_EQ(bench.form.get_ODS_Num(), 0);
    EXPECT_EQ(bench.form.get_ods(0), 0x311001);
}

TEST(PosFlowLoad, MissingFilesLeaveAnEmptyPageAndJobsThatRefuse) {
    PosFlowForm bench;
    std::filesystem::remove(bench.folder / "sys/PosFlow.cdo");
    std::filesystem::remove(bench.folder / "sys/PosFlow.ini");
    bench.form.load(bench.folder.path());
    EXPECT_EQ(bench.form.get_ODS_Num(), -1);
    EXPECT_TRUE(bench.notice.boxes.empty());
    bench.form.Command1_Click();
    bench.form.Command2_Click();
    bench.language = base::Language::kChinese;
    bench.form.Command1_Click();
    EXPECT_EQ(bench.notice.boxes, (Boxes{{" Notice", "Position Flow cdo file init failed!"},
                                         {" Notice", "Position Flow cdo file init failed!"},
                                         {" 提示", "位置流cdo文件初始化失败!"}}));
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
}

TEST(PosFlowLoad, TheListIsLookedAtBeforeTheEncoder) {
    PosFlowForm bench;
    bench.values.operands.o64100320.seen = false;
    std::filesystem::remove(bench.folder / "sys/PosFlow.cdo");
    bench.form.load(bench.folder.path());
    bench.form.Command1_Click();
    EXPECT_EQ(bench.notice.boxes.front().second, "Position Flow cdo file init failed!");
}

TEST(PosFlowJobs, RefuseWithoutTheEncoderResolution) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "5");
    bench.values.operands.o64100320.seen = false;
    bench.form.Command1_Click();
    bench.form.Command2_Click();
    bench.language = base::Language::kChinese;
    bench.form.Command2_Click();
    const std::string english = "Encoder data not initialized,can't fix the unit of speed,failed!";
    EXPECT_EQ(bench.notice.boxes, (Boxes{{" Notice", english},
                                         {" Notice", english},
                                         {" 提示", "编码器数据未初始化，不能确定速度的单位!"}}));
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
    EXPECT_EQ(bench.cell(1, step_column::kPos), "5") << "not cleared";
}

TEST(PosFlowJobs, AnEncoderOf0IncrementsIsNone) {
    PosFlowForm bench;
    bench.know_encoder(0);
    bench.form.Command2_Click();
    EXPECT_EQ(bench.notice.boxes.size(), 1U);
    EXPECT_EQ(bench.engine.state.batch_mode, 0);
}

TEST(PosFlowJobs, ReadResetsTheGridsAndSetsTheSelectors) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "5");
    bench.engine.state.batch_row = 77;
    bench.engine.state.batch_warmup = 3;
    bench.form.Command1_Click();
    EXPECT_EQ(bench.engine.state.batch_mode, 3);
    EXPECT_EQ(bench.engine.state.batch_row, 0);
    EXPECT_EQ(bench.engine.state.batch_warmup, 0);
    EXPECT_EQ(bench.grids(), cleared_grids());
}

TEST(PosFlowJobs, WriteKeepsTheGrids) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "5");
    bench.form.Command2_Click();
    EXPECT_EQ(bench.engine.state.batch_mode, 4);
    EXPECT_EQ(bench.cell(1, step_column::kPos), "5");
}

TEST(PosFlowJobs, RestIsResetByARead) {
    PosFlowForm bench;
    bench.form.import_file(bench.put_file("0,0,0,0,0,0,0,0,12\r\n"));
    EXPECT_EQ(bench.cell(1, step_column::kRest), "12");
    bench.form.Command1_Click();
    EXPECT_EQ(bench.cell(1, step_column::kRest), "0");
}

TEST(PosFlowFiles, TheDialogsHaveTheFilterAndNoName) {
    PosFlowForm bench;
    bench.form.Command3_Click();
    bench.form.Command4_Click();
    ASSERT_EQ(bench.questions.size(), 2U);
    EXPECT_EQ(bench.questions[0].filter, "pft (*.pft)|*.pft");
    EXPECT_FALSE(bench.questions[0].save);
    EXPECT_TRUE(bench.questions[1].save);
    EXPECT_TRUE(bench.notice.boxes.empty()) << "cancelled";
}

TEST(PosFlowFiles, ExportAndImportGiveTheSameTable) {
    PosFlowForm bench;
    bench.edit(1, step_column::kPos, "1234");
    bench.edit(32, step_column::kLoops, "99");
    bench.form.MSHFlexGrid1_Click(8, 2);
    bench.enter("12.5");
    const PositionGrids before = bench.grids();
    bench.answer = (bench.folder / "out.pft").string();
    bench.form.Command4_Click();
    bench.form.Command5_Click();
    EXPECT_NE(bench.grids(), before);
    bench.form.Command3_Click();
    EXPECT_EQ(bench.grids(), before);
}

TEST(PosFlowFiles, AnImportDecodesTheSelectedRow) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(3, 0);
    bench.answer = bench.put_file("2,0,0,0,0,0,0A1f5,0,0\r\n");
    bench.form.Command3_Click();
    EXPECT_EQ(bench.field(0), "21");
    EXPECT_EQ(bench.field(8), "2");
    EXPECT_EQ(bench.field(9), "2");
    EXPECT_EQ(bench.cell(3, step_column::kCtlReg), "A1F5") << "brought into its form";
}

TEST(PosFlowFiles, AFileThatCannotBeOpenedEndsSilently) {
    PosFlowForm bench;
    const PositionGrids before = bench.grids();
    bench.answer = (bench.folder / "none.pft").string();
    bench.form.Command3_Click();
    bench.answer = (bench.folder / "none" / "out.pft").string();
    bench.form.Command4_Click();
    EXPECT_TRUE(bench.notice.boxes.empty());
    EXPECT_EQ(bench.grids(), before);
}

TEST(PosFlowClear, SetsEveryCellButTheHeadings) {
    PosFlowForm bench;
    bench.edit(7, step_column::kSpeed, "5");
    bench.edit_field(register_field::kGoOn, "1");
    bench.form.MSHFlexGrid1_Click(1, 1);
    bench.enter("9");
    bench.form.Command5_Click();
    PositionGrids told = cleared_grids();
    set_headings(told, 7, base::Language::kEnglish);
    EXPECT_EQ(bench.grids(), told);
}

TEST(PosFlowLanguage, TheStoredThirdItemHasAMarkUntilTheFirstSwitch) {
    PosFlowForm bench;
    EXPECT_EQ(bench.form.data().Combo2, (ListItems{"Ignore", "Wait", "Interrupt!"}));
    bench.form.change_my_language();
    EXPECT_EQ(bench.form.data().Combo2, (ListItems{"Ignore", "Wait", "Interrupt"}));
    bench.language = base::Language::kChinese;
    bench.form.change_my_language();
    EXPECT_EQ(bench.form.data().Combo2, (ListItems{"忽略", "等待", "中断"}));
}

TEST(PosFlowLanguage, ASwitchChangesHeadingsAndItemsAndKeepsValues) {
    PosFlowForm bench;
    bench.form.MSHFlexGrid2_Click(4, 0);
    bench.form.update_CTL_REG(4, 0x5103);
    bench.edit(4, step_column::kPos, "77");
    bench.language = base::Language::kChinese;
    bench.form.change_my_language();
    EXPECT_EQ(bench.grids().MSHFlexGrid2.at(0, 3), "位置inc");
    EXPECT_EQ(bench.grids().MSHFlexGrid3.at(0, 0), "控制寄存器:3");
    EXPECT_EQ(bench.cell(4, step_column::kStartCond), "等待");
    EXPECT_EQ(bench.cell(5, step_column::kStartCond), "忽略");
    EXPECT_EQ(bench.cell(4, step_column::kPos), "77");
    EXPECT_EQ(bench.cell(4, step_column::kCtlReg), "5103");
    const PositionGrids once = bench.grids();
    bench.form.change_my_language();
    EXPECT_EQ(bench.grids(), once);
}

TEST(PosFlowPage, ShowsTheLiveIndex) {
    PosFlowForm bench;
    CountingObserver observer;
    bench.form.set_observer(&observer);
    EXPECT_EQ(bench.form.running_step(), -1);
    bench.form.set_ods(0, 12);
    EXPECT_EQ(bench.form.data().Text1, "12");
    EXPECT_EQ(bench.form.running_step(), 12);
    EXPECT_EQ(observer.labels, 1);
    bench.form.set_ods(0, 255);
    EXPECT_EQ(bench.form.data().Text1, "255");
    EXPECT_EQ(bench.form.running_step(), -1);
    bench.form.set_ods(5, 1);
    EXPECT_EQ(bench.form.data().Text1, "255") << "only the first row has a box";
    EXPECT_EQ(bench.form.get_ods(7), 0);
    EXPECT_EQ(bench.form.get_odtype(7), "");
}

TEST(PosFlowPage, TextsOfTheControlsAreTold) {
    EXPECT_EQ(kPosFlowCaption, "位置表模式/Position Table Mode");
    std::vector<std::pair<std::string, std::string>> texts;
    for (const PosFlowText& each : pos_flow_texts())
        texts.emplace_back(each.control, each.text);
    EXPECT_EQ(texts, (Boxes{{"Command1", "读取配置表/Read Table"},
                            {"Command2", "写入配置表/Write Table"},
                            {"Command3", "导入配置表/Import Table"},
                            {"Command4", "导出配置表/Export Table"},
                            {"Command5", "清空配置表/Clear Table"},
                            {"Label1", "当前索引/Current Index"}}));
}

}  // namespace
}  // namespace servo::tools
