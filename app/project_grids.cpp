#include "app/project_grids.h"

#include "params/modbus_table.h"
#include "params/tabbed_page.h"

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

}  // namespace

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
