#include "app/project_grids.h"

#include "params/modbus_table.h"
#include "params/tabbed_page.h"
#include "tools/easy.h"
#include "tools/pos_flow.h"

namespace servo::app {

namespace {

class ModbusProjectGrid final : public ProjectGrid {
  public:
    explicit ModbusProjectGrid(const dictionary::Store& dictionary) : dictionary_(dictionary) {}
    int rows() const override { return static_cast<int>(dictionary_.modbus_rows()) + 1; }
    std::string cell(int row, int column) const override {
        if (column >= params::kModbusColumns) return {};
        return dictionary_.modbus_cell(static_cast<std::size_t>(row - 1),
                                       static_cast<std::size_t>(column));
    }
    void set_rows(std::vector<params::Row>) override {}

  private:
    const dictionary::Store& dictionary_;
};

class RampProjectGrid final : public ProjectGrid {
  public:
    explicit RampProjectGrid(const tools::RampGrid& grid) : grid_(grid) {}
    int rows() const override { return tools::RampGrid::kRows; }
    std::string cell(int row, int column) const override {
        return tools::RampGrid::holds(row, column) ? grid_.at(row, column) : std::string();
    }
    void set_rows(std::vector<params::Row>) override {}

  private:
    const tools::RampGrid& grid_;
};

class PinProjectGrid final : public ProjectGrid {
  public:
    int rows() const override { return tools::easy::kPins + 1; }
    std::string cell(int row, int column) const override {
        return column == 0 ? tools::easy::pin_text(row - 1) : std::string();
    }
    void set_rows(std::vector<params::Row>) override {}
};

}  // namespace

std::unique_ptr<ProjectGrid> find_ramp_grid(link::Window& window) {
    const auto* table = dynamic_cast<const tools::PosFlow*>(&window);
    return table == nullptr ? nullptr
                            : std::make_unique<RampProjectGrid>(table->data().grids.MSHFlexGrid1);
}

std::unique_ptr<ProjectGrid> find_pin_grid(link::Window& window) {
    return window.name() == "EASY1" ? std::make_unique<PinProjectGrid>() : nullptr;
}

std::unique_ptr<ProjectGrid> find_tab_grid(link::Window& window) {
    auto* page = dynamic_cast<params::TabbedPage*>(&window);
    return page == nullptr ? nullptr : page_project_grid(page->active_grid());
}

std::unique_ptr<ProjectGrid> find_modbus_grid(link::Window& window,
                                              const dictionary::Store& dictionary) {
    if (window.name() != "modbus") return nullptr;
    return std::make_unique<ModbusProjectGrid>(dictionary);
}

}  // namespace servo::app
