#include "tools/configuration_notes.h"

#include <fmt/format.h>

#include <algorithm>

namespace servo::tools {

namespace {

// "{}" stand for numbers in their order.
template <typename... Values>
std::string said(base::Language language, std::string_view zh, std::string_view en,
                 const Values&... values) {
    return fmt::format(fmt::runtime(language == base::Language::kChinese ? zh : en), values...);
}

ConfigurationNote running_note(const ImExport& form, const TransferCount& count, bool survey) {
    const base::Language language = form.language();
    if (!form.link_open())
        return {
            said(language, "等待通信：打开连接后开始", "Waiting: it begins when the link is open"),
            true};
    if (survey)
        return {said(language, "正在读驱动器：第 {} 行，共 {} 行",
                     "Reading the drive: row {} of {}", count.done, count.all),
                false};
    return {said(language, "第 {} 行，共 {} 行；失败 {}", "Row {} of {}; {} failed", count.done,
                 count.all, count.failed),
            count.failed > 0};
}

ConfigurationNote cut_note(base::Language language, const TransferCount& count,
                           ConfigurationSide side) {
    const bool closed = count.end == TransferEnd::kLinkClosed;
    if (side == ConfigurationSide::kWrite)
        return {closed ? said(language, "第 {} 行（共 {} 行）处连接关闭：其后的行没有写入",
                              "The link was closed at row {} of {}: nothing behind it was written",
                              count.done, count.all)
                       : said(language, "停止于第 {} 行（共 {} 行）：其后的行没有写入",
                              "Stopped at row {} of {}: nothing behind it was written", count.done,
                              count.all),
                true};
    return {
        closed ? said(language, "第 {} 行（共 {} 行）处连接关闭：其后的行没有读出",
                      "The link was closed at row {} of {}: nothing behind it was read", count.done,
                      count.all)
               : said(language, "停止于第 {} 行（共 {} 行）：其后的行没有读出",
                      "Stopped at row {} of {}: nothing behind it was read", count.done, count.all),
        true};
}

ConfigurationNote finished_note(const ImExport& form, const TransferCount& count,
                                ConfigurationSide side) {
    const base::Language language = form.language();
    if (count.failed > 0)
        return {said(language, "{} 行失败：见“失败的行”", "{} of {} rows failed: see Failed Rows",
                     count.failed, count.all),
                true};
    if (side == ConfigurationSide::kRead)
        return {said(language, "{} 行全部读出：可以导出", "All {} rows are read: ready to export",
                     count.all),
                false};
    return {said(language, "写入完成：存储到 EEPROM 后断电才不丢失",
                 "Written. To keep it over a power-off, store it to the EEPROM"),
            false};
}

std::string row_count(base::Language language, std::size_t rows) {
    return said(language, "{} 行", rows == 1 ? "{} row" : "{} rows", rows);
}

std::size_t invalid_rows(const ImExport& form) {
    return static_cast<std::size_t>(
        std::ranges::count(form.data().source, std::string(kInvalidWord), &SourceRow::Result));
}

// A file may break off without a trace in its rows.
ConfigurationNote with_break(const ImExport& form, ConfigurationSide side, ConfigurationNote note) {
    const auto line = form.broken_line(side);
    if (!line) return note;
    return {said(form.language(), "文件在第 {} 行中断，其后未载入：{}",
                 "The file breaks off at line {}, the rest is not loaded: {}", *line, note.text),
            true};
}

ConfigurationNote loaded_note(const ImExport& form, ConfigurationSide side) {
    const base::Language language = form.language();
    if (form.unreadable(side))
        return {said(language, "无法打开文件", "The file could not be opened"), true};
    if (side == ConfigurationSide::kRead) {
        if (form.template_file().empty())
            return {said(language, "请先选择要读出的参数模板", "Choose a template of what to read"),
                    false};
        return with_break(form, side, {row_count(language, form.data().driver.size()), false});
    }
    if (form.source_file().empty())
        return {said(language, "请先选择要写入的文件", "Choose a file to write"), false};
    const std::size_t invalid = invalid_rows(form);
    const std::string rows = row_count(language, form.data().source.size());
    if (invalid == 0) return with_break(form, side, {rows, false});
    return with_break(form, side,
                      {rows + said(language, "，其中 {} 行无效，将被跳过",
                                   "; {} of them invalid, to be passed over", invalid),
                       true});
}

// What gets no answer leaves no other trace on the window.
ConfigurationNote sent_note(const ImExport& form) {
    const base::Language language = form.language();
    if (!form.link_open())
        return {said(language, "没有连接：什么也没有发送", "No link: nothing was sent"), true};
    if (form.sent() == ConfigurationCommand::kRestart)
        return {said(language, "重启命令已发送", "The restart is sent"), false};
    if (form.locked())
        return {said(language, "存储命令已发送三次；按钮恢复之前请勿断电",
                     "Sent three times. Keep the power on until the buttons are back"),
                false};
    return {said(language, "存储命令已发送三次（不检查驱动器的应答）",
                 "The store command was sent three times; the answer is not looked at"),
            false};
}

}  // namespace

ConfigurationNote configuration_note(const ImExport& form, ConfigurationSide side) {
    const bool write = side == ConfigurationSide::kWrite;
    const ConfigurationTransfer& job = form.job();
    if (write && job.surveying()) return running_note(form, form.data().survey_count, true);
    const TransferCount& count = write ? form.data().write_count : form.data().read_count;
    if (write ? job.writing() : job.reading()) return running_note(form, count, false);
    if (write && form.sent() != ConfigurationCommand::kNone) return sent_note(form);
    switch (count.end) {
        case TransferEnd::kNone:
            return loaded_note(form, side);
        case TransferEnd::kFinished:
            return finished_note(form, count, side);
        case TransferEnd::kStopped:
        case TransferEnd::kLinkClosed:
            return cut_note(form.language(), count, side);
    }
    return {};
}

}  // namespace servo::tools
