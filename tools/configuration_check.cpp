#include "tools/configuration_check.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "base/number.h"

namespace servo::tools {

namespace {

constexpr double kFullRange = 4294967296.0;

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

bool is_hex_digit(char c) {
    return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

// A value's text as the number scanner sees it.
struct Reading {
    bool number = false;     // it begins with one
    bool left_over = false;  // something that is no blank stands behind it
    bool hex = false;
    double value = 0;  // before it is brought into 32 bits
};

std::size_t skip(std::string_view text, std::size_t at, bool (*wanted)(char)) {
    while (at < text.size() && wanted(text[at]))
        ++at;
    return at;
}

Reading read_value(const std::string& text) {
    Reading reading;
    const auto blank = [](char c) { return c == ' '; };
    std::size_t at = skip(text, 0, blank);
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    const std::size_t begin = at;
    reading.hex = text.compare(at, 2, "0x") == 0;
    if (reading.hex) {
        at = skip(text, at + 2, is_hex_digit);
        reading.number = at > begin + 2;
    } else {
        at = skip(text, at, is_digit);
        if (at < text.size() && text[at] == '.') at = skip(text, at + 1, is_digit);
        reading.number = std::any_of(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                     text.begin() + static_cast<std::ptrdiff_t>(at), is_digit);
    }
    std::string scanned = text;
    if (reading.hex) scanned.replace(begin, 2, "&H");
    reading.value = base::leading_number(scanned);
    reading.left_over = reading.number && skip(text, at, blank) != text.size();
    return reading;
}

bool fits(double value, int bytes) {
    const double range = bytes == 1 ? 256.0 : bytes == 2 ? 65536.0 : kFullRange;
    return value >= -range / 2 && value < range;
}

// Writing these does something at once.
bool is_command(dictionary::Identity object) {
    const int index = object >> 8;
    const int sub = object & 0xFF;
    return ((index == 0x1010 || index == 0x1011 || index == 0x2FF0) && sub != 0) ||
           object == 0x2FFF00 || object == 0x604000;
}

void check_value(const SourceRow& row, int bytes, std::vector<RowWarning>& warnings) {
    const Reading reading = read_value(row.Source_Value);
    if (!reading.number) {
        warnings.push_back(RowWarning::kNoNumber);
        return;
    }
    if (reading.left_over) warnings.push_back(RowWarning::kLeftOver);
    const auto sent = source_number(row.Source_Value);
    if (!sent) {
        warnings.push_back(RowWarning::kTooLarge);
        return;
    }
    if (reading.value >= kFullRange) {
        warnings.push_back(RowWarning::kWrapped);
    } else if (reading.hex && bytes == 4 && reading.value < 0 && *sent >= -32768) {
        // All digits of a 32-bit number below zero are told: only short ones surprise.
        const std::size_t digits = row.Source_Value.size() - row.Source_Value.find("0x") - 2;
        if (digits < 8) warnings.push_back(RowWarning::kSignExtended);
    }
    const double fraction =
        reading.value - static_cast<double>(base::round_half_even(reading.value));
    if (fraction != 0) warnings.push_back(RowWarning::kRounded);
    // A hexadecimal text of the object's own width is that pattern, whatever its sign.
    if (!fits(reading.value, bytes)) warnings.push_back(RowWarning::kTooWide);
}

void check_object(dictionary::WireKey key, const dictionary::Store& dictionary,
                  std::vector<RowWarning>& warnings) {
    const auto object = dictionary::identity_of(key);
    const auto record = dictionary.get_record(object);
    if (record.key == 0) {
        warnings.push_back(RowWarning::kUnknownObject);
        return;
    }
    const int decoder = dictionary::decoder_size(dictionary::strip_blanks(record.type));
    if (decoder % 10 != static_cast<int>(key & 0xFF)) warnings.push_back(RowWarning::kOtherLength);
    if (record.attr.find('W') == std::string::npos) warnings.push_back(RowWarning::kReadOnly);
    if (is_command(object)) warnings.push_back(RowWarning::kCommand);
}

// The one object of a row, as the comparison shows it.
ComparedRow values_of(const SourceRow& row, const std::vector<DriverRow>& drive,
                      const dictionary::Store& dictionary, const link::FormulaOperands& operands,
                      bool& changes) {
    ComparedRow shown;
    SourceRow alone = row;
    Comparison one =
        compare_configurations(configuration_values(drive),
                               configuration_values({std::move(alone)}), dictionary, operands);
    changes = !one.rows.empty();
    if (changes) {
        shown = std::move(one.rows.front());
        // The file lists it, or it would not be here: it could not be asked for.
        if (shown.A.side == ComparedSide::kAbsent) shown.A.side = ComparedSide::kUnread;
        return shown;
    }
    // Equal values are shown as well where a warning brings the row in: against nothing.
    Comparison listed =
        compare_configurations({}, configuration_values(drive), dictionary, operands);
    if (!listed.rows.empty()) {
        shown = std::move(listed.rows.front());
        shown.A = shown.B;
        return shown;
    }
    shown.Index = row.Index;
    shown.name_ch = row.name_ch;
    shown.name_en = row.name_en;
    shown.unit = "DEC";
    shown.A.side = ComparedSide::kUnread;
    return shown;
}

class Runner {
  public:
    Runner(const std::vector<DriverRow>& survey, const dictionary::Store& dictionary,
           const link::FormulaOperands& operands)
        : dictionary_(dictionary), operands_(operands_of(survey, operands)) {
        for (const DriverRow& row : survey)
            if (const auto key = row_key(row.Index)) drive_[*key] = row;
    }

    void check(std::size_t at, const SourceRow& row) {
        CheckedRow checked;
        checked.row = at;
        checked.warnings = row_warnings(row, dictionary_);
        const auto key = row_key(row.Index);
        const bool valid = row.Result != kInvalidWord && row.Result != kIllegalWord;
        const auto number = key && valid ? source_number(row.Source_Value) : std::nullopt;
        if (number) {
            ++run_.writes;
            checked.goes_out = std::to_string(*number);
            if (!written_.insert(*key).second) checked.warnings.push_back(RowWarning::kAgain);
        }
        const std::vector<DriverRow> now = drive_rows(key);
        if (number && (now.empty() || now.front().Result != kTrueWord))
            checked.warnings.push_back(RowWarning::kNotRead);
        checked.values = values_of(row, now, dictionary_, operands_, checked.changes);
        checked.changes = checked.changes && number;
        if (number && checked.changes) leave(*key, row);
        if (checked.changes) ++run_.changes;
        if (!checked.warnings.empty()) ++run_.warned;
        if (checked.changes || !checked.warnings.empty()) run_.rows.push_back(std::move(checked));
    }

    DryRun take() { return std::move(run_); }

  private:
    // What the drive itself says of the values that formulas refer to goes before what the engine
    // has heard of them earlier.
    static link::FormulaOperands operands_of(const std::vector<DriverRow>& survey,
                                             link::FormulaOperands operands) {
        const auto take = [&](std::string_view Index, link::Operand& operand) {
            for (const DriverRow& row : survey)
                if (row.Index == Index && row.Result == kTrueWord)
                    if (const auto number = source_number(row.Driver_Value))
                        operand = {*number, true};
        };
        take("64100320", operands.o64100320);
        take("65100310", operands.o65100310);
        take("30400720", operands.o30400710);
        take("60F61310", operands.o60F61310);
        take("60F61110", operands.o60F61110);
        return operands;
    }

    std::vector<DriverRow> drive_rows(std::optional<dictionary::WireKey> key) const {
        if (!key) return {};
        const auto found = drive_.find(*key);
        return found == drive_.end() ? std::vector<DriverRow>{}
                                     : std::vector<DriverRow>{found->second};
    }

    // A later row of the same object meets what this one has left.
    void leave(dictionary::WireKey key, const SourceRow& row) {
        DriverRow& now = drive_[key];
        now.Index = row.Index;
        now.Driver_Value = row.Source_Value;
        now.Result = kTrueWord;
    }

    const dictionary::Store& dictionary_;
    link::FormulaOperands operands_;
    std::map<dictionary::WireKey, DriverRow> drive_;
    std::set<dictionary::WireKey> written_;
    DryRun run_;
};

}  // namespace

std::vector<RowWarning> row_warnings(const SourceRow& row, const dictionary::Store& dictionary) {
    if (row.Result == kInvalidWord || row.Result == kIllegalWord) return {RowWarning::kInvalid};
    const auto key = row_key(row.Index);
    if (!key) return {RowWarning::kNoKey};
    std::vector<RowWarning> warnings;
    check_value(row, static_cast<int>(*key & 0xFF), warnings);
    check_object(*key, dictionary, warnings);
    return warnings;
}

DryRun dry_run(const std::vector<SourceRow>& source, const std::vector<DriverRow>& survey,
               const dictionary::Store& dictionary, const link::FormulaOperands& operands) {
    Runner runner(survey, dictionary, operands);
    for (std::size_t row = 0; row < source.size(); ++row)
        runner.check(row, source[row]);
    return runner.take();
}

base::Text warning_text(RowWarning warning) {
    switch (warning) {
        case RowWarning::kInvalid:
            return {"文件中未标为 True：跳过", "not marked True in the file: passed over"};
        case RowWarning::kNoKey:
            return {"不是八位十六进制键：不写入，计为失败",
                    "no key of eight digits: not sent, counts as a failure"};
        case RowWarning::kNoNumber:
            return {"数值不是数字：将写入 0", "the value is no number: 0 is sent"};
        case RowWarning::kLeftOver:
            return {"数字后面的内容被忽略", "what stands behind the number is dropped"};
        case RowWarning::kRounded:
            return {"小数：将取整", "a fraction: rounded to a whole number"};
        case RowWarning::kTooLarge:
            return {"超过 32 位：不写入，计为失败",
                    "more than 32 bits: not sent, counts as a failure"};
        case RowWarning::kWrapped:
            return {"超过 32 位的部分将丢失", "what is beyond 32 bits is dropped"};
        case RowWarning::kSignExtended:
            return {"四位十六进制数按有符号 16 位读取，高半字全为 1",
                    "four hexadecimal digits are a signed 16-bit number: the upper half is all "
                    "ones"};
        case RowWarning::kTooWide:
            return {"数值超出对象的宽度", "the value does not fit the object's width"};
        case RowWarning::kUnknownObject:
            return {"字典中没有该对象", "the dictionary does not know the object"};
        case RowWarning::kOtherLength:
            return {"字典中该对象的长度不同", "the dictionary has the object with another length"};
        case RowWarning::kReadOnly:
            return {"字典中该对象为只读", "the dictionary says that the object is read-only"};
        case RowWarning::kCommand:
            return {"这是命令，写入后立即执行", "a command: the drive acts on it at once"};
        case RowWarning::kAgain:
            return {"前面的行已写过该对象", "an earlier row writes the object too"};
        case RowWarning::kNotRead:
            return {"无法读出驱动器的当前值", "the drive's value could not be read"};
    }
    return {};
}

}  // namespace servo::tools
