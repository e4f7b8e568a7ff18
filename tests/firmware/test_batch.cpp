// Batch files and barcodes: tables of both.
#include <gtest/gtest.h>

#include "base/gbk.h"
#include "base/temp_folder.h"
#include "firmware/batch.h"

using namespace servo::firmware;

namespace {

constexpr std::string_view kIni =
    "[Alpha]\r\nSN_Compare=QX\r\nCompare_Pos=3\r\nSN_Length=10\r\nFW_Name=alpha.servo\r\n"
    "[Beta]\r\nSN_Compare=B\r\nCompare_Pos=1\r\nSN_Length=4\r\nFW_Name=std\r\n"
    "[Files]\r\nstd=standard.servo=old\r\n";

Product shown(std::string compare, std::string position, std::string length) {
    return {std::move(compare), std::move(position), std::move(length), {}};
}

}  // namespace

TEST(BatchFile, SectionOfTheProductGivesTheFourValues) {
    const auto product = find_product(kIni, "Alpha");
    ASSERT_TRUE(product);
    EXPECT_EQ(product->SN_Compare, "QX");
    EXPECT_EQ(product->Compare_Pos, "3");
    EXPECT_EQ(product->SN_Length, "10");
    EXPECT_EQ(product->FW_Name, "alpha.servo");
}

TEST(BatchFile, NamesOfSectionsAndKeysHaveNoCase) {
    EXPECT_TRUE(find_product(kIni, "ALPHA"));
    EXPECT_TRUE(find_product("[a]\nsn_compare=1\ncompare_pos=1\nsn_length=1\nfw_name=f", "A"));
}

TEST(BatchFile, AnyOfTheFourMissingOrEmptyIsRefused) {
    EXPECT_FALSE(find_product(kIni, "Gamma"));
    EXPECT_FALSE(find_product("", "Alpha"));
    const std::string lines[] = {"SN_Compare=QX", "Compare_Pos=3", "SN_Length=10", "FW_Name=f"};
    for (const auto& left_out : lines) {
        std::string without = "[A]\n";
        std::string empty = "[A]\n";
        for (const auto& line : lines) {
            if (line != left_out) without += line + "\n";
            empty += (line == left_out ? line.substr(0, line.find('=') + 1) : line) + "\n";
        }
        EXPECT_FALSE(find_product(without, "A")) << left_out;
        EXPECT_FALSE(find_product(empty, "A")) << left_out;
    }
}

TEST(BatchFile, AliasIsResolvedByTheFirstLineThatHoldsIt) {
    EXPECT_EQ(find_product(kIni, "Beta")->FW_Name, "standard.servo") << "up to any next \"=\"";
}

TEST(BatchFile, AliasLineMayHoldMoreBeforeTheName) {
    const std::string ini =
        "[A]\nSN_Compare=1\nCompare_Pos=1\nSN_Length=1\nFW_Name=std\n[F]\nmy std=x.servo\n";
    EXPECT_EQ(find_product(ini, "A")->FW_Name, "x.servo");
}

TEST(BatchFile, NameThatEndsAKeyResolvesToThatKeysValue) {
    const std::string ini =
        "[A]\nSN_Compare=1\nCompare_Pos=1\nSN_Length=1\nFW_Name=Name\n[F]\nName=x.servo\n";
    EXPECT_EQ(find_product(ini, "A")->FW_Name, "Name") << "the line FW_Name= is the first";
}

TEST(BatchFile, AliasIsCaseSensitiveAndKeepsItsBlanks) {
    const std::string head = "[A]\nSN_Compare=1\nCompare_Pos=1\nSN_Length=1\nFW_Name=std\n[F]\n";
    EXPECT_EQ(find_product(head + "STD=x.servo\n", "A")->FW_Name, "std");
    EXPECT_EQ(find_product(head + "std= x.servo\n", "A")->FW_Name, " x.servo");
    EXPECT_EQ(find_product(head + "std =x.servo\n", "A")->FW_Name, "std");
}

TEST(BatchFile, QuotedNameIsTrimmedForTheSearchOnly) {
    const std::string head = "[A]\nSN_Compare=1\nCompare_Pos=1\nSN_Length=1\nFW_Name=\" std \"\n";
    EXPECT_EQ(find_product(head + "[F]\nstd=x.servo\n", "A")->FW_Name, "x.servo");
    EXPECT_EQ(find_product(head, "A")->FW_Name, " std ");
}

TEST(BatchFile, ValuesAreCutAtTheirBuffers) {
    const std::string ini =
        "[A]\nSN_Compare=" + std::string(2000, 'c') + "\nCompare_Pos=" + std::string(80, '1') +
        "\nSN_Length=" + std::string(80, '2') + "\nFW_Name=" + std::string(80, 'f') + "\n";
    const auto product = find_product(ini, "A");
    EXPECT_EQ(product->SN_Compare.size(), 1023U);
    EXPECT_EQ(product->Compare_Pos.size(), 49U);
    EXPECT_EQ(product->SN_Length.size(), 49U);
    EXPECT_EQ(product->FW_Name.size(), 49U);
}

TEST(BatchFile, ChineseNamesAreOfTheCodePage) {
    const std::string ini = servo::base::utf8_to_gbk(
        "[驱动器]\r\nSN_Compare=号\r\nCompare_Pos=1\r\nSN_Length=4\r\nFW_Name=固件.servo\r\n");
    const auto product = find_product(ini, "驱动器");
    ASSERT_TRUE(product);
    EXPECT_EQ(product->SN_Compare, "号");
    EXPECT_EQ(product->FW_Name, "固件.servo");
    EXPECT_EQ(check_barcode("号001", *product), Barcode::kMatches) << "four characters";
}

TEST(Barcode, Table) {
    struct Line {
        const char* barcode;
        const char* compare;
        const char* position;
        const char* length;
        Barcode verdict;
    };
    const Line table[] = {
        {"12QX567890", "QX", "3", "10", Barcode::kMatches},
        {"12QX56789", "QX", "3", "10", Barcode::kWrongLength},
        {"12QX5678901", "QX", "3", "10", Barcode::kWrongLength},
        {"", "QX", "3", "10", Barcode::kWrongLength},
        {"12qx567890", "QX", "3", "10", Barcode::kNoMatch},   // case counts
        {"1QX4567890", "QX", "3", "10", Barcode::kNoMatch},   // elsewhere
        {"12345678QX", "QX", "9", "10", Barcode::kMatches},   // at the very end
        {"123456789Q", "QX", "10", "10", Barcode::kNoMatch},  // reaches beyond it
        {"1234567890", "QX", "11", "10", Barcode::kNoMatch},  // behind it
        {"1234567890", "QX", "1e300", "10", Barcode::kNoMatch},
        {"QX34567890", "QX", "1", "10", Barcode::kMatches},
        {"QX34567890", "QX", "0", "10", Barcode::kBadPosition},
        {"QX34567890", "QX", "-1", "10", Barcode::kBadPosition},
        {"QX34567890", "QX", "x", "10", Barcode::kBadPosition},
        {"QX34567890", "QX", "0.5", "10", Barcode::kBadPosition},  // halves to even
        {"QX34567890", "QX", "0.6", "10", Barcode::kMatches},
        {"1QX4567890", "QX", "1.5", "10", Barcode::kMatches},
        {"1QX4567890", "QX", "2.5", "10", Barcode::kMatches},
        {"12QX567890", "QX", "2.51", "10", Barcode::kMatches},
        {"12QX567890", "QX", "3rd", "10 characters", Barcode::kMatches},  // leading numbers
        {"12QX567890", "QX", "&H3", "&HA", Barcode::kMatches},
        {"12QX567890", "QX", "3", "10.5", Barcode::kWrongLength},
        {"12QX567890", "QX", "0", "9", Barcode::kWrongLength},  // the length is looked at first
        {"", "nothing", "nothing", "nothing", Barcode::kBadPosition},
    };
    for (const Line& line : table)
        EXPECT_EQ(check_barcode(line.barcode, shown(line.compare, line.position, line.length)),
                  line.verdict)
            << line.barcode << " at " << line.position << " of " << line.length;
}

TEST(BatchImage, LiesBesideTheBatchFile) {
    TempFolder folder;
    folder.put("a.servo", "");
    const std::string ini = (folder / "line.ini").string();
    EXPECT_EQ(image_beside(ini, "a.servo"), folder / "a.servo");
    EXPECT_EQ(image_beside(ini, "A.SERVO"), folder / "a.servo") << "names have no case";
    EXPECT_EQ(image_beside(ini, "b.servo"), folder / "b.servo");
}

TEST(BatchImage, LastPartOfThePathIsReplaced) {
    EXPECT_EQ(image_beside("line.ini", "b.servo"), "b.servo");
    EXPECT_EQ(image_beside("/no/such/line.ini", "b.servo"), "/no/such/b.servo");
}
