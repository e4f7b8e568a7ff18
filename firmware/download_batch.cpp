// The production side of the form: batch file, product name, barcode.
#include "base/file.h"
#include "firmware/batch.h"
#include "firmware/download.h"
#include "firmware/transfer_texts.h"

namespace servo::firmware {

namespace {

constexpr char32_t kEnter = 13;
constexpr std::string_view kNothing = "nothing";

constexpr base::Text kCheckIni{"错误,请检查ini文件!", "Wrong,please check your ini file!"};

// In Chinese only, and without a title of their own.
constexpr std::string_view kWrongLength = "条码长度不匹配";
constexpr std::string_view kNoMatch = "条码与配置文件不匹配";
constexpr std::string_view kWrongImage = "错误的文件格式";
constexpr std::string_view kCannotOpen = "Tavro文件不能正确打开";

}  // namespace

void Download::Command5_Click() {
    if (const auto chosen = services_.ask_file(kIniQuestion)) choose_batch(*chosen);
}

bool Download::choose_batch(const std::string& file) {
    // Read once to prove that it can be.
    if (!base::read_file(file)) {
        say(kCheckIni);
        return false;
    }
    data_.Ini_File_Path1 = file;
    data_.Label13 = file;
    data_.Text3_enabled = true;
    data_.Text4_enabled = true;
    changed();
    return true;
}

void Download::type_Text3(std::string text) {
    data_.Text3 = std::move(text);
}

void Download::type_Text4(std::string text) {
    data_.Text4 = std::move(text);
}

bool Download::Text3_KeyPress(char32_t key) {
    if (key != kEnter) return false;
    if (!data_.Text3.empty()) enter_product();
    changed();
    return true;
}

void Download::enter_product() {
    const auto content = base::read_file(data_.Ini_File_Path1);
    const auto product = content ? find_product(*content, data_.Text3) : std::nullopt;
    if (!product) return refuse_product();
    data_.Label8 = product->FW_Name;
    data_.Label10 = product->SN_Compare;
    data_.Label12 = product->SN_Length;
    data_.Label15 = product->Compare_Pos;
    data_.focus = "Text4";
}

void Download::refuse_product() {
    say(kCheckIni);
    for (std::string* label : {&data_.Label8, &data_.Label10, &data_.Label12, &data_.Label15})
        *label = kNothing;
    data_.Text3.clear();
    data_.focus = "Text3";
}

bool Download::Text4_KeyPress(char32_t key) {
    // Without a product there is nothing to scan for: the box stays empty.
    if (data_.Text3.empty() || data_.Ini_File_Path1.empty()) {
        data_.Text4.clear();
        changed();
        return true;
    }
    if (key != kEnter) return false;
    enter_barcode();
    changed();
    return true;
}

void Download::enter_barcode() {
    data_.click_just_happend = false;
    const Product shown{data_.Label10, data_.Label15, data_.Label12, data_.Label8};
    switch (check_barcode(data_.Text4, shown)) {
        case Barcode::kWrongLength:
            return say_batch(kWrongLength);
        case Barcode::kNoMatch:
            return say_batch(kNoMatch);
        case Barcode::kBadPosition:
            return say_batch(kCannotOpen);
        case Barcode::kMatches:
            break;
    }
    if (!take_batch_image()) return;
    data_.click_just_happend = true;
    switch (start()) {
        case Started::kStarted:
        case Started::kRunning:
            return;
        case Started::kNotRead:
            data_.click_just_happend = false;
            return;
        case Started::kNoDate:
            data_.click_just_happend = false;
            return say_batch(kCannotOpen);
    }
}

bool Download::take_batch_image() {
    const std::filesystem::path file = image_beside(data_.Ini_File_Path1, data_.Label8);
    const auto content = base::read_file(file);
    if (!content) {
        say_batch(kCannotOpen);
        return false;
    }
    data_.Label4 = file.string();
    const Image image = read_image(*content);
    const bool header_read =
        image.fault == ImageFault::kNone || image.fault == ImageFault::kTooLong;
    if (header_read) {
        // Kept even when the second line then turns out to be missing.
        data_.FW_Type = image.header.FW_Type;
        data_.CRC_From_File = image.header.CRC_From_File;
    }
    if (image.fault == ImageFault::kNoType) {
        say_batch(kCannotOpen);
        return false;
    }
    if (image.fault != ImageFault::kNone || !image.blocks) {
        say_batch(kWrongImage);
        return false;
    }
    data_.fw_blocks = image.blocks;
    data_.lost_characters = image.lost_characters;
    return true;
}

void Download::say_batch(std::string_view text) {
    services_.notice.show({}, text);
}

}  // namespace servo::firmware
