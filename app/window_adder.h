// Adds windows to the host as the window table describes them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "app/style.h"
#include "app/window_host.h"
#include "app/window_table.h"
#include "app/workstation.h"

namespace servo::app {

class WindowAdder {
  public:
    using Kind = ChildWindow::Kind;

    // Both outlive what is added.
    WindowAdder(WindowHost& host, Workstation& workstation)
        : host_(host), workstation_(workstation) {}

    // For windows that are none of the table.
    WindowHost& host() { return host_; }

    void add(std::string_view name, std::function<QWidget*()> make, Kind frame = Kind::kPage,
             bool roomy = false) {
        const WindowDefinition& definition = *find_window_definition(name);
        const auto caption = [&definition, &workstation = workstation_](base::Language language) {
            return to_qt(caption_of(definition, language, workstation.Tavro_Nevra_Other_mode));
        };
        host_.add_kind(std::string(name), {.make = std::move(make),
                                           .caption = caption,
                                           .frame = frame,
                                           .designed_font = definition.designed_font,
                                           .roomy = roomy});
    }

  private:
    WindowHost& host_;
    Workstation& workstation_;
};

}  // namespace servo::app
