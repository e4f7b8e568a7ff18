// The error table document, read back from its bytes as a spreadsheet would: container, records,
// cells.
#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "data/tools/compound_file.h"
#include "data/tools/fault_document.h"
#include "data/tools/xls_file.h"
#include "dictionary/store.h"
#include "tools/fault_table.h"

namespace servo::data {
namespace {

using dictionary::Variant;

std::uint32_t number_at(const std::string& bytes, std::size_t place, int count) {
    std::uint32_t value = 0;
    for (int i = 0; i < count; ++i)
        value |=
            std::uint32_t{static_cast<unsigned char>(bytes.at(place + static_cast<std::size_t>(i)))}
            << 8 * i;
    return value;
}

// The stream named in the directory, along its chain of sectors.
std::string stream_of(const std::string& file, std::string* name = nullptr) {
    constexpr std::size_t kSector = 512;
    EXPECT_EQ(file.substr(0, 8), "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
    EXPECT_EQ(file.size() % kSector, 0U);
    std::vector<std::uint32_t> chain;
    for (std::uint32_t i = 0; i < number_at(file, 44, 4); ++i) {
        const std::size_t table = (number_at(file, 76 + 4 * i, 4) + 1) * kSector;
        for (std::size_t entry = 0; entry < kSector; entry += 4)
            chain.push_back(number_at(file, table + entry, 4));
    }
    const std::size_t entry = (number_at(file, 48, 4) + 1) * kSector + 128;
    if (name != nullptr)
        for (std::size_t i = 0; i + 2 < number_at(file, entry + 64, 2); i += 2)
            *name += file.at(entry + i);
    std::string stream;
    for (std::uint32_t sector = number_at(file, entry + 116, 4); sector != 0xFFFFFFFE;
         sector = chain.at(sector)) {
        stream += file.substr((sector + 1) * kSector, kSector);
        if (stream.size() > file.size()) break;  // a ring
    }
    return stream.substr(0, number_at(file, entry + 120, 4));
}

struct Record {
    std::uint32_t type = 0;
    std::string body;
};

std::vector<Record> records_from(const std::string& stream, std::size_t place) {
    std::vector<Record> records;
    while (records.empty() || records.back().type != 0x000A) {
        const std::size_t size = number_at(stream, place + 2, 2);
        EXPECT_LE(size, 8224U);
        records.push_back({number_at(stream, place, 2), stream.substr(place + 4, size)});
        place += 4 + size;
    }
    return records;
}

std::string text_at(const std::string& body, std::size_t place, std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t unit = number_at(body, place + 2 * i, 2);
        if (unit < 0x80) {
            text += static_cast<char>(unit);
        } else if (unit < 0x800) {
            text += static_cast<char>(0xC0 | unit >> 6);
            text += static_cast<char>(0x80 | (unit & 0x3F));
        } else {
            text += static_cast<char>(0xE0 | unit >> 12);
            text += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
            text += static_cast<char>(0x80 | (unit & 0x3F));
        }
    }
    return text;
}

struct Read {
    std::vector<std::string> strings;
    std::vector<std::string> names;
    std::vector<std::map<std::pair<std::uint32_t, std::uint32_t>, XlsCell>> cells;
    std::vector<std::vector<Record>> sheets;
    std::size_t string_records = 0;
};

void take_strings(const Record& record, std::size_t place, Read& into) {
    ++into.string_records;
    while (place < record.body.size()) {
        const std::size_t count = number_at(record.body, place, 2);
        EXPECT_EQ(number_at(record.body, place + 2, 1), 1U);
        into.strings.push_back(text_at(record.body, place + 3, count));
        place += 3 + 2 * count;
    }
    EXPECT_EQ(place, record.body.size()) << "no text is cut";
}

Read read(const std::string& file) {
    Read found;
    const std::string stream = stream_of(file);
    for (const Record& record : records_from(stream, 0)) {
        if (record.type == 0x00FC) take_strings(record, 8, found);
        if (record.type == 0x003C) take_strings(record, 0, found);
        if (record.type != 0x0085) continue;
        found.names.push_back(text_at(record.body, 8, number_at(record.body, 6, 1)));
        found.sheets.push_back(records_from(stream, number_at(record.body, 0, 4)));
    }
    for (const auto& sheet : found.sheets) {
        auto& cells = found.cells.emplace_back();
        EXPECT_EQ(sheet.front().type, 0x0809U);
        for (const Record& record : sheet) {
            if (record.type != 0x00FD && record.type != 0x0203) continue;
            const auto place =
                std::pair(number_at(record.body, 0, 2), number_at(record.body, 2, 2));
            if (record.type == 0x00FD) {
                cells[place] = found.strings.at(number_at(record.body, 6, 4));
            } else {
                double number = 0;
                std::memcpy(&number, record.body.data() + 6, sizeof number);
                cells[place] = static_cast<int>(number);
            }
        }
    }
    return found;
}

XlsCell text(std::string value) {
    return value;
}

TEST(FaultDocument, EveryCellIsReadBackAsItIsInTheTable) {
    const auto sheets = fault_sheets(Variant::kAllItems);
    const Read found = read(xls_bytes(sheets));
    EXPECT_EQ(found.names, (std::vector<std::string>{"English", "中文"}));
    for (const std::size_t sheet : {0U, 1U}) {
        ASSERT_EQ(sheets[sheet].rows.size(), 33U);
        EXPECT_EQ(found.cells[sheet].size(), 33U * 6U);
        for (std::uint32_t row = 0; row < 33; ++row)
            for (std::uint32_t column = 0; column < 6; ++column)
                EXPECT_EQ((found.cells[sheet].at({row, column})), sheets[sheet].rows[row][column]);
    }
}

TEST(FaultDocument, ARowHasWordBitMaskNameCauseAndRemedy) {
    const auto sheets = fault_sheets(Variant::kAllItems);
    EXPECT_EQ(sheets[0].rows[0],
              (std::vector<XlsCell>{text("Word"), text("Bit"), text("Mask"), text("Fault"),
                                    text("Cause"), text("Remedy")}));
    const auto& row = sheets[0].rows[26];
    EXPECT_EQ(row[0], XlsCell(2));
    EXPECT_EQ(row[1], XlsCell(9));
    EXPECT_EQ(row[2], text("0x0200"));
    EXPECT_EQ(row[3], text("STO1 Error"));
    EXPECT_EQ(sheets[1].rows[10][3], text("实际跟踪误差超过允许"));
    EXPECT_EQ(row[4], text(std::string(tools::fault_table()[25].cause.english)));
    EXPECT_EQ(row[5], text(std::string(tools::fault_table()[25].remedy.english)));
}

TEST(FaultDocument, EveryObjectThatATextNamesIsInTheDictionary) {
    dictionary::Store dictionary;
    ASSERT_TRUE(dictionary.open_dat(SERVO_BIN_DIR));
    const std::regex object("([0-9A-F]{4})(:([0-9A-F]{2}))?");
    int named = 0;
    for (const tools::Fault& fault : tools::fault_table())
        for (const std::string_view each : {fault.cause.english, fault.remedy.english}) {
            const std::string told(each);
            for (std::sregex_iterator at(told.begin(), told.end(), object), end; at != end; ++at) {
                const int index = std::stoi(at->str(1), nullptr, 16);
                const int sub = at->length(3) == 0 ? 0 : std::stoi(at->str(3), nullptr, 16);
                EXPECT_TRUE(dictionary.find(index << 8 | sub)) << at->str() << ": " << told;
                ++named;
            }
        }
    EXPECT_GT(named, 40);
}

TEST(FaultDocument, TheReducedProductHasItsOwnNames) {
    EXPECT_EQ(fault_sheets(Variant::kReduced)[0].rows[2][3], text("Encoder not connected"));
    EXPECT_EQ(fault_sheets(Variant::kAllItems)[0].rows[2][3],
              text("Encoder ABZ or encoder communication"));
}

TEST(FaultDocument, TheHeadingStaysInView) {
    const auto sheets = fault_sheets(Variant::kAllItems);
    for (const auto& sheet : read(xls_bytes(sheets)).sheets) {
        int panes = 0;
        for (const Record& record : sheet)
            if (record.type == 0x0041) {
                ++panes;
                EXPECT_EQ(number_at(record.body, 2, 2), 1U) << "rows above the split";
            }
        EXPECT_EQ(panes, 1);
    }
}

TEST(FaultDocument, TheDocumentBesideTheProgramIsThisOne) {
    std::ifstream in(SERVO_BIN_DIR "/sys/Errors.xls", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    const auto here = xls_bytes(fault_sheets(Variant::kAllItems));
    const auto reduced = xls_bytes(fault_sheets(Variant::kReduced));
    EXPECT_TRUE(bytes == here || bytes == reduced);
}

TEST(XlsFile, TextsBeyondARecordGoOnInTheNext) {
    XlsSheet sheet{.name = "S", .widths = {10}, .rows = {{text("heading")}}};
    for (int i = 0; i < 40; ++i)
        sheet.rows.push_back(
            {text(std::string(500, static_cast<char>('a' + i % 26)) + std::to_string(i))});
    const Read found = read(xls_bytes(std::vector{sheet}));
    EXPECT_GT(found.string_records, 3U);
    for (std::uint32_t row = 0; row < 41; ++row)
        EXPECT_EQ((found.cells[0].at({row, 0})), sheet.rows[row][0]);
}

TEST(XlsFile, ATextThatRecursIsKeptOnce) {
    XlsSheet sheet{.name = "S", .widths = {10, 10}, .rows = {{text("a"), text("b")}}};
    sheet.rows.push_back({text("a"), text("a")});
    const Read found = read(xls_bytes(std::vector{sheet}));
    EXPECT_EQ(found.strings, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(found.cells[0].size(), 4U);
}

TEST(XlsFile, CharactersOfEveryLengthAreKept) {
    const XlsSheet sheet{.name = "S", .widths = {10}, .rows = {{text("A\u00B5\u4E2D\U0001F600z")}}};
    const Read found = read(xls_bytes(std::vector{sheet}));
    EXPECT_EQ((found.cells[0].at({0, 0})), text("A\u00B5\u4E2D\uFFFDz"));
}

TEST(CompoundFile, AStreamOfAnyLengthIsReadBack) {
    for (const std::size_t size : {0U, 1U, 4095U, 4096U, 4097U, 64512U, 65024U, 65536U, 200000U}) {
        std::string stream(size, 'x');
        for (std::size_t i = 0; i < size; ++i)
            stream[i] = static_cast<char>(i * 7 % 251);
        std::string name;
        std::string found = stream_of(compound_file("Workbook", stream), &name);
        EXPECT_EQ(name, "Workbook");
        EXPECT_EQ(found.size(), std::max<std::size_t>(size, 4096));
        EXPECT_EQ(found.substr(0, size), stream) << size;
    }
}

}  // namespace
}  // namespace servo::data
