#include <gtest/gtest.h>

#include "params/page_editor.h"
#include "params/test_page_support.h"

namespace servo::params {
namespace {

using base::Language;
using test::Bench;
using Items = std::vector<std::string>;

EditorDecision decide(const Row& row, int column, Language language = Language::kEnglish) {
    return decide_editor(&row, column, language, true, true);
}

TEST(PageEditor, AnyButtonButTheLeftHidesBothEditors) {
    const Row row = Bench().row(0x607A00);
    EXPECT_EQ(decide_editor(&row, kValue, Language::kEnglish, false, true).action,
              EditorAction::kHide);
}

TEST(PageEditor, AClickBelowTheLastRowHidesBothEditors) {
    const Row row = Bench().row(0x607A00);
    EXPECT_EQ(decide_editor(&row, kValue, Language::kEnglish, true, false).action,
              EditorAction::kHide);
    EXPECT_EQ(decide_editor(nullptr, kValue, Language::kEnglish, true, false).action,
              EditorAction::kHide);
}

TEST(PageEditor, TheHeaderOpensNothingAndClosesNothing) {
    for (int column = 0; column < kColumns; ++column) {
        EXPECT_EQ(decide_editor(nullptr, column, Language::kEnglish, true, true).action,
                  EditorAction::kLeave);
    }
}

TEST(PageEditor, AValueCellOpensTheTextEditorWithItsText) {
    Row row = Bench().row(0x607A00);
    row.value = "1234";
    const EditorDecision decision = decide(row, kValue);
    EXPECT_EQ(decision.action, EditorAction::kOpen);
    EXPECT_EQ(decision.state.open, Editor::kText);
    EXPECT_EQ(decision.state.text, "1234");
}

TEST(PageEditor, ADecRowWithItemListsOpensTheDropDown) {
    const Row row = Bench().row(0x606000);
    const EditorDecision decision = decide(row, kValue);
    EXPECT_EQ(decision.state.open, Editor::kList);
    EXPECT_EQ(decision.state.items, (Items{"1:Position", "3:Velocity", "-4:Pulse"}));
    EXPECT_EQ(decision.state.selected, -1) << "the cell is empty";
    EXPECT_EQ(decide(row, kValue, Language::kChinese).state.items,
              (Items{"1:位置", "3:速度", "-4:脉冲"}));
}

TEST(PageEditor, AHexRowWithItemListsOpensTheDropDown) {
    EXPECT_EQ(decide(Bench().row(0x604000), kValue).state.open, Editor::kList);
}

TEST(PageEditor, TheItemThatBeginsWithTheCellsTextAndAColonIsSelected) {
    Row row = Bench().row(0x606000);
    row.value = "3";
    EXPECT_EQ(decide(row, kValue).state.selected, 1);
    row.value = "-4";
    EXPECT_EQ(decide(row, kValue).state.selected, 2);
    row.value = "-";
    EXPECT_EQ(decide(row, kValue).state.selected, -1);
    row.value = "3:Velocity";  // a choice that the drive has not answered yet
    EXPECT_EQ(decide(row, kValue).state.selected, -1);
}

TEST(PageEditor, AListInOneLanguageOnlyOpensTheTextEditor) {
    EXPECT_EQ(decide(Bench().row(0x608100), kValue).state.open, Editor::kText);
}

TEST(PageEditor, ADecRowWithoutItemListsOpensTheTextEditor) {
    Row row = Bench().row(0x607A00);
    row.unit = "DEC";
    EXPECT_EQ(decide(row, kValue).state.open, Editor::kText);
}

TEST(PageEditor, SynonymsOfDecOpenTheTextEditorInSpiteOfTheirLists) {
    Row row = Bench().row(0x608400);
    EXPECT_EQ(row.unit, "INC");
    EXPECT_EQ(decide(row, kValue).state.open, Editor::kText);
    row.unit = "inc";
    EXPECT_EQ(decide(row, kValue).state.open, Editor::kText);
    row.unit = "HEX";
    EXPECT_EQ(decide(row, kValue).state.open, Editor::kList);
}

TEST(PageEditor, AReadOnlyRowOpensNothingInValueAndTheListInUnit) {
    const Row row = Bench().row(0x607100);
    EXPECT_EQ(decide(row, kValue).action, EditorAction::kHide);
    const EditorDecision unit = decide(row, kUnit);
    EXPECT_EQ(unit.action, EditorAction::kOpen);
    EXPECT_EQ(unit.state.open, Editor::kList);
    EXPECT_EQ(unit.state.items, Items{"DEC"});
}

TEST(PageEditor, TheUnitListHoldsTheTargetOfEachLineOnce) {
    const Row row = Bench().row(0x60FF00);
    const EditorDecision unit = decide(row, kUnit);
    EXPECT_EQ(unit.state.items, (Items{"rpm", "DEC"}));
    EXPECT_EQ(unit.state.selected, 0);
}

TEST(PageEditor, UnitsLoseTheirBlanksAndComeInTheOrderOfTheLines) {
    EXPECT_EQ(unit_items("[HEX]N*1\n[DEC r p m]N*2\n[rpm DEC]N\n[DEC]N*1\n[inc]N"),
              (Items{"HEX", "rpm", "DEC", "inc"}));
    EXPECT_EQ(unit_items(""), Items{"DEC"});
    EXPECT_EQ(unit_items("no head\n[rpm]N"), (Items{"DEC", "rpm"}));
}

TEST(PageEditor, AUnitThatIsNotInItsListSelectsNothing) {
    Row row = Bench().row(0x60FF00);
    row.unit = "furlong";
    EXPECT_EQ(decide(row, kUnit).state.selected, -1);
}

TEST(PageEditor, AnyOtherCellHidesBothEditors) {
    const Row row = Bench().row(0x607A00);
    for (const int column :
         {kNumber + 0, kIndex + 0, kType + 0, kName + 0, kFormula + 0, kListCh + 0, -1}) {
        EXPECT_EQ(decide(row, column).action, EditorAction::kHide) << column;
    }
}

TEST(PageEditor, AListThatIsOnlyABarHasOneEmptyItem) {
    Row row = Bench().row(0x606000);
    row.list_en = "|";
    EXPECT_EQ(value_items(row, Language::kEnglish), Items{""});
}

TEST(KeyFilter, AFullStopPassesIfTheTextHoldsNoneYet) {
    for (const char* unit : {"DEC", "rpm", "HEX", "ASCII"}) {
        EXPECT_TRUE(key_passes(U'.', "12", unit));
        EXPECT_FALSE(key_passes(U'.', "1.2", unit));
        EXPECT_FALSE(key_passes(U'.', ".", unit));
    }
}

TEST(KeyFilter, CopyBackspacePasteAndMinusPassEverywhereAndInAnyNumber) {
    for (const char* unit : {"DEC", "rpm", "HEX", "ASCII"}) {
        for (const char32_t key : {kKeyCopy, kKeyBackspace, kKeyPaste, char32_t{U'-'}}) {
            EXPECT_TRUE(key_passes(key, "--1-2", unit));
        }
    }
}

TEST(KeyFilter, OnlyDigitsPassInANumberUnit) {
    for (const char* unit : {"DEC", "INC", "inc", "rpm", "", "hex", "ascii"}) {
        for (char32_t key = U'0'; key <= U'9'; ++key)
            EXPECT_TRUE(key_passes(key, "", unit));
        for (const char32_t key : {U'A', U'F', U'a', U'e', U'E', U'z'}) {
            EXPECT_FALSE(key_passes(key, "", unit)) << unit;
        }
    }
}

TEST(KeyFilter, HexadecimalDigitsPassInHex) {
    for (const char32_t key : {U'0', U'9', U'A', U'F', U'a', U'f'}) {
        EXPECT_TRUE(key_passes(key, "", "HEX"));
    }
    for (const char32_t key : {U'G', U'g', U'x', U'H', U'&'}) {
        EXPECT_FALSE(key_passes(key, "", "HEX"));
    }
}

TEST(KeyFilter, LettersAndDigitsPassInAscii) {
    for (const char32_t key : {U'0', U'9', U'A', U'Z', U'a', U'z'}) {
        EXPECT_TRUE(key_passes(key, "", "ASCII"));
    }
    for (const char32_t key : {U' ', U'_', U'@', U'[', U'`', U'{', U'/', U':', U'中'}) {
        EXPECT_FALSE(key_passes(key, "", "ASCII"));
    }
}

TEST(KeyFilter, EverythingElseIsSwallowed) {
    // Among them the characters of Ctrl+X, Ctrl+Z and Ctrl+A.
    for (const char32_t key :
         {char32_t{24}, char32_t{26}, char32_t{1}, char32_t{9}, char32_t{U' '}, char32_t{U'+'},
          char32_t{U','}, char32_t{U'*'}, char32_t{U'('}, kKeyEnter, kKeyEsc, kKeySwallowed}) {
        for (const char* unit : {"DEC", "rpm", "HEX", "ASCII"}) {
            EXPECT_FALSE(key_passes(key, "", unit)) << static_cast<unsigned>(key);
        }
    }
}

TEST(FocusLoss, TheTextEditorGoesUnlessTheLastClickOpenedIt) {
    EXPECT_TRUE(hides_on_focus_loss(Editor::kText, Editor::kNone));
    EXPECT_FALSE(hides_on_focus_loss(Editor::kText, Editor::kText));
    EXPECT_TRUE(hides_on_focus_loss(Editor::kText, Editor::kList));
}

TEST(FocusLoss, TheDropDownGoesUnlessTheLastClickOpenedIt) {
    EXPECT_TRUE(hides_on_focus_loss(Editor::kList, Editor::kNone));
    EXPECT_TRUE(hides_on_focus_loss(Editor::kList, Editor::kText));
    EXPECT_FALSE(hides_on_focus_loss(Editor::kList, Editor::kList));
}

TEST(FocusLoss, NothingOpenHidesNothing) {
    EXPECT_FALSE(hides_on_focus_loss(Editor::kNone, Editor::kText));
    EXPECT_FALSE(hides_on_focus_loss(Editor::kNone, Editor::kNone));
}

}  // namespace
}  // namespace servo::params
