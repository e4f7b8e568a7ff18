// The form with its transfer on the virtual bench, the text bootloader on its line.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "firmware/download.h"
#include "support/virtual_bench.h"
#include "text_bootloader.h"

namespace servo::test {

using firmware::TransferEnd;

struct TransferBench : VirtualBench {
    TransferBench() {
        // Tests move a date by hand; files without an entry have that of the disk.
        port.record = true;
    }

    // A payload in which every block carries its checksum.
    static std::string payload(std::size_t characters) {
        std::string text;
        for (std::size_t at = 0; at < characters; at += firmware::kBlockCharacters) {
            std::string block;
            const std::size_t size = std::min(firmware::kBlockCharacters, characters - at);
            for (std::size_t i = at; i < at + size; ++i)
                block.push_back("0123456789abcdef"[(i * 7 + i / 16 + i / 4120) % 16]);
            text += TextBootloader::sealed(std::move(block), at / firmware::kBlockCharacters);
        }
        return text;
    }
    std::filesystem::path put_image(const std::string& text, std::string_view name = "a.servo",
                                    std::string_view header = "This is ZARN firmware 12AB34CD.") {
        folder.put(name, std::string(header) + "\r\n" + text + "\r\n");
        return folder / name;
    }
    // An image of so many characters, loaded.
    void load(std::size_t characters) {
        ASSERT_TRUE(download.load_image(put_image(payload(characters))));
    }
    // Opens the link on a drive that sits in its bootloader, and starts.
    void start() {
        if (!port.is_open()) open_link();
        // The poller's first requests are no part of what a test looks at.
        engine.state.sendmod = 0;
        port.clear_out();
        port.written.clear();
        download.Command4_Click();
    }
    // Until the transfer is over. False: it is still running.
    bool finish(std::chrono::microseconds limit = 120s) {
        return run_until([this] { return engine.state.download_active == 0; }, limit);
    }
    std::string sent() const { return {port.written.begin(), port.written.end()}; }
    std::optional<TransferEnd> ended() const {
        if (!download.result()) return std::nullopt;
        return download.result()->end;
    }
    // The last box: title and text.
    std::pair<std::string, std::string> box() const {
        return notice.boxes.empty() ? std::pair<std::string, std::string>() : notice.boxes.back();
    }
    const firmware::DownloadData& data() const { return download.data(); }
    link::EngineState& state = engine.state;

    base::Language language = base::Language::kEnglish;
    dictionary::Variant brand = dictionary::Variant::kAllItems;
    std::vector<std::optional<std::string>> answers;  // of the file dialog, in order
    std::vector<std::string> filters;                 // that it was shown with
    std::string version;
    std::map<std::filesystem::path, std::optional<firmware::FileDate>> dates;

    TextBootloader drive{time, line};
    firmware::Download download{{
        .engine = engine,
        .notice = notice,
        .language = language,
        .Tavro_Nevra_Other_mode = brand,
        .ask_file = [this](const firmware::FileQuestion& question) -> std::optional<std::string> {
            filters.emplace_back(question.filter);
            if (answers.empty()) return std::nullopt;
            auto answer = answers.front();
            answers.erase(answers.begin());
            return answer;
        },
        .software_version = [this] { return version; },
        .file_date =
            [this](const std::filesystem::path& file) -> std::optional<firmware::FileDate> {
            const auto found = dates.find(file);
            return found == dates.end() ? firmware::modification_date(file) : found->second;
        },
    }};
};

}  // namespace servo::test
