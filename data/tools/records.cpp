#include "data/tools/records.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/file.h"
#include "base/gbk.h"
#include "dictionary/store.h"

namespace servo::data {

namespace {

void sort_by_key(std::vector<Object>& objects) {
    std::ranges::stable_sort(objects, {}, &Object::key);
}

void put(std::string& record, std::string_view utf8, std::size_t width, char fill) {
    std::string bytes = base::utf8_to_gbk(utf8);
    bytes.resize(width, fill);
    record += bytes;
}

// Readers cut texts at the first NUL. The attribute is shown untrimmed when it is a single letter,
// so it is filled with blanks.
std::string record_of(const Object& object) {
    std::string record = fmt::format("{:06X}", object.key);
    put(record, object.name_zh, 64, '\0');
    put(record, object.name_en, 64, '\0');
    put(record, object.type, 16, ' ');
    put(record, object.attr, 8, ' ');
    put(record, object.comment_zh, 4096, '\0');
    put(record, object.comment_en, 4096, '\0');
    put(record, object.formula, 200, '\0');
    put(record, object.modbus, 4, ' ');
    return record;
}

}  // namespace

std::string build_records(std::vector<Object> objects) {
    sort_by_key(objects);
    std::string bytes;
    bytes.reserve(objects.size() * dictionary::kRecordSize);
    for (const Object& object : objects)
        bytes += record_of(object);
    return bytes;
}

std::string modbus_list(std::vector<Object> objects) {
    sort_by_key(objects);
    std::string text;
    for (const Object& object : objects) {
        if (object.modbus.front() == 'N') continue;
        text += fmt::format("{:06X},{},0x{}\n", object.key, object.name_en, object.modbus);
    }
    return text + "END\n";
}

std::string tree_text(std::string_view utf8) {
    std::string out;
    base::LineReader reader(utf8);
    while (const auto line = reader.next()) {
        out += base::utf8_to_gbk(*line);
        out += "\r\n";
    }
    return out;
}

}  // namespace servo::data
