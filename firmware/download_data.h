// What the form `Download` holds, by the names that its controls and members carry. The form's
// actions and the transfer share it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "firmware/image.h"

namespace servo::firmware {

using FileDate = std::filesystem::file_time_type;

struct DownloadData {
    // --- The image
    std::string FW_Type;
    std::string CRC_From_File;
    // Never null; an empty list stands for one that was never filled.
    std::shared_ptr<const Blocks> fw_blocks = std::make_shared<const Blocks>(1);
    std::int16_t fw_block_index = 0;  // the next block to send
    std::size_t lost_characters = 0;  // addition: what the rounding left out of the last image

    // --- The transfer: ticks spent waiting, and the reply so far (bytes)
    std::int16_t step3_cnt = 0;  // steps 3 and 4
    std::string step3_string;
    std::int16_t step5_cnt = 0;
    std::string step5_string;
    std::int16_t step6_cnt = 0;
    std::string step6_string;
    std::int16_t step7_cnt = 0;
    std::string step7_string;
    std::int16_t step8_cnt = 0;
    std::string step8_string;
    std::int16_t step9_cnt = 0;
    std::string step9_string;
    std::int16_t step10_cnt = 0;
    std::string step10_string;

    // --- The image chosen by hand
    std::filesystem::path file_path;
    std::optional<FileDate> file_date;  // at the moment it was read; nothing: it could not be told
    bool reload = false;                // the load action reads the known path without a dialog

    // --- The batch
    std::string Ini_File_Path1;
    bool click_just_happend = false;

    // --- Controls; texts in UTF-8
    bool Command1_enabled = true;   // load file
    bool Command4_enabled = false;  // download
    bool Text3_enabled = false;     // product name
    bool Text4_enabled = false;     // barcode
    bool Check1 = false;            // batch mode: a mark for the operator, nothing hangs on it
    std::string Text3;
    std::string Text4;
    std::string Text5 = "NULL";    // path of the image
    std::string Label1 = "NULL";   // header and checksum of the image
    std::string Label4;            // path of a batch image; empty: the label shows its caption
    std::string Label8;            // firmware file of the product
    std::string Label10;           // SN_Compare
    std::string Label12;           // SN_Length
    std::string Label13 = "NULL";  // path of the batch file
    std::string Label15;           // Compare_Pos
    std::string Label17;           // checksum that the drive reports
    std::string Label18;           // software version of the drive
    double ProgressBar1 = 0.0;     // percent of the blocks, 0 to 100
    std::string focus;             // the control that was given the focus last, by its name
};

}  // namespace servo::firmware
