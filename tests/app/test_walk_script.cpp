#include <gtest/gtest.h>

#include "app/walk_script.h"
#include "app/walk_words.h"

namespace servo::app {
namespace {

WalkCommand only(std::string_view line) {
    const std::vector<WalkCommand> commands = parse_walk(line);
    EXPECT_EQ(commands.size(), 1U) << line;
    return commands.empty() ? WalkCommand{} : commands.front();
}

WalkTarget target(std::string_view text) {
    const std::optional<WalkTarget> parsed = parse_target(text);
    EXPECT_TRUE(parsed.has_value()) << text;
    return parsed.value_or(WalkTarget{});
}

TEST(WalkScript, EmptyLinesAndCommentsAreNoCommands) {
    EXPECT_TRUE(parse_walk("").empty());
    EXPECT_TRUE(parse_walk("\n  \n# menu PosLoop\n   # more\n").empty());
}

TEST(WalkScript, LinesKeepTheirNumbersInTheFile) {
    const auto commands = parse_walk("# one\nmenu PosLoop\n\nquit");
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(commands[0].line, 2);
    EXPECT_EQ(commands[1].line, 4);
}

TEST(WalkScript, ByteOrderMarkAndCarriageReturnsDoNotMatter) {
    const auto commands = parse_walk("\xEF\xBB\xBFmenu PosLoop\r\ntype A.Text1 12\r\n");
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(commands[0].verb, WalkVerb::kMenu);
    EXPECT_EQ(commands[0].text, "PosLoop");
    EXPECT_EQ(commands[1].text, "12");
}

TEST(WalkScript, CommandsWithOneName) {
    EXPECT_EQ(only("tool commx").verb, WalkVerb::kTool);
    EXPECT_EQ(only("tool commx").text, "commx");
    EXPECT_EQ(only("popup adding").text, "adding");
    EXPECT_EQ(only("open Basic").window, "Basic");
    EXPECT_EQ(only("close Form1").window, "Form1");
    EXPECT_EQ(only("quit").verb, WalkVerb::kQuit);
    EXPECT_EQ(only("simulator din 3 1").verb, WalkVerb::kSimulator);
    EXPECT_EQ(only("simulator din 3 1").text, "din 3 1");
}

TEST(WalkScript, ControlsOfAnArrayKeepTheirIndex) {
    const WalkCommand command = only("click Errors.Check1(3)");
    EXPECT_EQ(command.verb, WalkVerb::kClick);
    EXPECT_EQ(command.window, "Errors");
    EXPECT_EQ(command.control, "Check1(3)");
}

TEST(WalkScript, CheckTakesOnOrOff) {
    EXPECT_TRUE(only("check Form1.Option1 on").on);
    EXPECT_FALSE(only("check Form1.Option1 off").on);
    EXPECT_EQ(only("check Form1.Option1").verb, WalkVerb::kBad);
    EXPECT_EQ(only("check Form1.Option1 yes").verb, WalkVerb::kBad);
}

TEST(WalkScript, ChooseAndTabTakeAPositionFromZero) {
    EXPECT_EQ(only("choose Form1.Combo2 4").number, 4);
    EXPECT_EQ(only("tab TPDOSet.SSTab1 0").verb, WalkVerb::kTab);
    EXPECT_EQ(only("choose Form1.Combo2 -1").verb, WalkVerb::kBad);
    EXPECT_EQ(only("choose Form1.Combo2 4x").verb, WalkVerb::kBad);
}

TEST(WalkScript, TypeTakesTheRestOfTheLine) {
    EXPECT_EQ(only("type Form1.Text1 two words").text, "two words");
    EXPECT_EQ(only("type Form1.Text1").text, "");
    EXPECT_EQ(only("type Form1.Text1 #5").text, "#5");
}

TEST(WalkScript, KeysAreNamedAndMayBeSeveral) {
    const WalkCommand command = only("key Basic.MSHFlexGrid1 Down Enter Ctrl+V x F12");
    ASSERT_EQ(command.keys.size(), 5U);
    EXPECT_EQ(command.keys[0].key, NamedKey::kDown);
    EXPECT_EQ(command.keys[1].key, NamedKey::kEnter);
    EXPECT_TRUE(command.keys[2].ctrl);
    EXPECT_EQ(command.keys[2].character, U'V');
    EXPECT_EQ(command.keys[3].character, U'x');
    EXPECT_EQ(command.keys[4].function, 12);
    EXPECT_EQ(only("key Basic.MSHFlexGrid1 Sideways").verb, WalkVerb::kBad);
    EXPECT_EQ(only("key Basic.MSHFlexGrid1").verb, WalkVerb::kBad);
}

TEST(WalkScript, PlusIsAKeyOfItsOwn) {
    EXPECT_EQ(parse_key("+")->character, U'+');
    const auto stroke = parse_key("Ctrl++");
    ASSERT_TRUE(stroke.has_value());
    EXPECT_TRUE(stroke->ctrl);
    EXPECT_EQ(stroke->character, U'+');
    EXPECT_FALSE(parse_key("Ctrl+").has_value());
    EXPECT_FALSE(parse_key("Hyper+x").has_value());
    EXPECT_FALSE(parse_key("F13").has_value());
    EXPECT_FALSE(parse_key("").has_value());
}

TEST(WalkScript, CellTakesAButton) {
    EXPECT_EQ(only("cell Basic.MSHFlexGrid1 3 4").button, WalkButton::kLeft);
    EXPECT_EQ(only("cell Basic.MSHFlexGrid1 3 4 right").button, WalkButton::kRight);
    const WalkCommand command = only("cell Basic.MSHFlexGrid1 3 4 double");
    EXPECT_EQ(command.button, WalkButton::kDouble);
    EXPECT_EQ(command.row, 3);
    EXPECT_EQ(command.column, 4);
    EXPECT_EQ(only("cell Basic.MSHFlexGrid1 3").verb, WalkVerb::kBad);
    EXPECT_EQ(only("cell Basic.MSHFlexGrid1 3 4 middle").verb, WalkVerb::kBad);
}

TEST(WalkScript, EditTakesATextWhichMayBeEmpty) {
    const WalkCommand command = only("edit VLoop.MSHFlexGrid1 2 4 12.5");
    EXPECT_EQ(command.text, "12.5");
    EXPECT_EQ(only("edit VLoop.MSHFlexGrid1 2 4").text, "");
}

TEST(WalkScript, DragTakesFourPartsOfAThousand) {
    const WalkCommand command = only("drag Scope.Picture1 0 500 1000 -20 right");
    EXPECT_EQ(command.points, (std::array{0, 500, 1000, -20}));
    EXPECT_EQ(command.button, WalkButton::kRight);
    EXPECT_EQ(only("drag Scope.Picture1 0 500 1000").verb, WalkVerb::kBad);
    EXPECT_EQ(only("drag Scope.Picture1 0 0 1 1 double").verb, WalkVerb::kBad);
}

TEST(WalkScript, FileTakesAPathWithBlanks) {
    EXPECT_EQ(only("file my projects/a.tpjt").text, "my projects/a.tpjt");
    EXPECT_EQ(only("file -").text, "-");
    EXPECT_EQ(only("file").verb, WalkVerb::kBad);
}

TEST(WalkScript, UntilHasTenSecondsUnlessToldOtherwise) {
    const WalkCommand plain = only("until toolbar.commx CommOKpic");
    EXPECT_EQ(plain.number, 10'000);
    EXPECT_EQ(plain.text, "CommOKpic");
    const WalkCommand limited = only("until Basic.MSHFlexGrid1[3,4] 12 rpm within 500");
    EXPECT_EQ(limited.number, 500);
    EXPECT_EQ(limited.text, "12 rpm");
}

TEST(WalkScript, UntilTakesWithinForTextWhenNoNumberFollows) {
    const WalkCommand command = only("until Form1.Label8 stay within reach");
    EXPECT_EQ(command.text, "stay within reach");
    EXPECT_EQ(command.number, 10'000);
    EXPECT_EQ(only("until Form1.Label8 herewithin 5").text, "herewithin 5");
}

TEST(WalkScript, UntilWaitsForAnEmptyText) {
    const WalkCommand command = only("until Form1.Label8 within 500");
    EXPECT_EQ(command.text, "");
    EXPECT_EQ(command.number, 500);
}

TEST(WalkScript, ShotTakesAFileAndAWindow) {
    EXPECT_EQ(only("shot a.png").window, "");
    const WalkCommand command = only("shot out dir/a.png Basic");
    EXPECT_EQ(command.text, "out dir/a.png");
    EXPECT_EQ(command.window, "Basic");
    EXPECT_EQ(only("shot a.jpg").verb, WalkVerb::kBad);
    EXPECT_EQ(only("shot a.png Basic VLoop").verb, WalkVerb::kBad);
}

TEST(WalkScript, PlaceTakesAWindowACornerAndASize) {
    const WalkCommand command = only("place Basic 10 20 800 500 # for the guide");
    EXPECT_EQ(command.verb, WalkVerb::kPlace);
    EXPECT_EQ(command.window, "Basic");
    EXPECT_EQ(command.points, (std::array{10, 20, 800, 500}));
    EXPECT_EQ(only("place Basic 10 20 800").verb, WalkVerb::kBad);
    EXPECT_EQ(only("place Basic -1 20 800 500").verb, WalkVerb::kBad);
    EXPECT_EQ(only("place Basic 10 20 800 10001").verb, WalkVerb::kBad);
    EXPECT_EQ(only("place").verb, WalkVerb::kBad);
}

TEST(WalkScript, ExpectMessageTakesTheWholeText) {
    EXPECT_EQ(only("expect-message Please check it!\\nNow.").text, "Please check it!\\nNow.");
}

TEST(WalkScript, CommentMayFollowACommand) {
    EXPECT_EQ(only("menu PosLoop # the page").text, "PosLoop");
    EXPECT_EQ(only("menu PosLoop #the page").text, "PosLoop");
    EXPECT_EQ(only("expect Basic.visible true # shown").text, "true");
    EXPECT_EQ(only("shot a.png Basic # for the guide").window, "Basic");
    EXPECT_EQ(only("quit # now").verb, WalkVerb::kQuit);
}

TEST(WalkScript, BadLineSaysWhyAndTheOthersStand) {
    const auto commands = parse_walk("mneu PosLoop\nmenu\nmenu a b\nmenu PosLoop\n");
    ASSERT_EQ(commands.size(), 4U);
    EXPECT_EQ(commands[0].verb, WalkVerb::kBad);
    EXPECT_EQ(commands[0].text, "no command has the name 'mneu'");
    EXPECT_EQ(commands[1].text, "menu: a name is missing");
    EXPECT_EQ(commands[2].text, "menu: nothing more expected, found 'b'");
    EXPECT_EQ(commands[3].verb, WalkVerb::kMenu);
}

TEST(WalkScript, TargetsOfEveryKind) {
    EXPECT_EQ(target("Form1.Combo1"), (WalkTarget{TargetKind::kText, "Form1", "Combo1"}));
    EXPECT_EQ(target("Basic.MSHFlexGrid1[3,4]"),
              (WalkTarget{TargetKind::kCell, "Basic", "MSHFlexGrid1", 3, 4}));
    EXPECT_EQ(target("Basic.MSHFlexGrid1[ 3, 4 ]").column, 4);
    EXPECT_EQ(target("Basic.MSHFlexGrid1.row").kind, TargetKind::kRow);
    EXPECT_EQ(target("Basic.caption").kind, TargetKind::kCaption);
    EXPECT_EQ(target("Basic.visible").kind, TargetKind::kWindowVisible);
    EXPECT_EQ(target("Form1.Check1(3).enabled"),
              (WalkTarget{TargetKind::kEnabled, "Form1", "Check1(3)"}));
    EXPECT_EQ(target("Form1.Combo1.visible").kind, TargetKind::kControlVisible);
    EXPECT_EQ(target("toolbar.commx"), (WalkTarget{TargetKind::kToolbar, "", "commx"}));
    EXPECT_EQ(target("engine.Com_Change"), (WalkTarget{TargetKind::kEngine, "", "Com_Change"}));
}

TEST(WalkScript, TextsThatAreNoTarget) {
    for (const char* text : {"", "Form1", ".Combo1", "Form1.", "Form1.Grid[3]", "Form1.Grid[a,b]",
                             "Form1.Grid[1,2", "Form1.[1,2]", "Form1.Grid[-1,2]", "Form1.A.color"})
        EXPECT_FALSE(parse_target(text).has_value()) << text;
}

TEST(WalkScript, TargetWithBlanksInItsBracketsIsOneWord) {
    const WalkCommand command = only("expect Basic.MSHFlexGrid1[3, 4] 12 rpm");
    EXPECT_EQ(command.target.column, 4);
    EXPECT_EQ(command.text, "12 rpm");
}

TEST(WalkScript, TextsAreComparedOnOneLineWithoutBlanksAtTheirEnds) {
    EXPECT_TRUE(same_text("a\r\nb", "a\\nb"));
    EXPECT_TRUE(same_text(" 12.50 ", "12.50"));
    EXPECT_TRUE(same_text("", ""));
    EXPECT_FALSE(same_text("a b", "ab"));
    EXPECT_FALSE(same_text("A", "a"));
    EXPECT_EQ(one_line("a\rb\nc\r\nd"), "a\\nb\\nc\\nd");
}

}  // namespace
}  // namespace servo::app
