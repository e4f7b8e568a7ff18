// Readings that live by themselves: voltages, temperatures, loads, times. Analog ones tremble a
// little, by the seed, as converters do.
#pragma once

#include <cstdint>
#include <unordered_map>

#include "sim/motion.h"
#include "sim/object_table.h"
#include "sim/subsystem.h"
#include "sim/supervision.h"

namespace servo::sim {

class LiveValues : public Subsystem {
  public:
    LiveValues(ObjectTable& table, const Motion& motion, const Supervision& supervision,
               std::uint64_t seed);

    void refresh(Object& object) override;

  private:
    using Getter = double (*)(LiveValues&);

    void show(dictionary::Identity id, Type type, Getter getter);
    void show_voltages();
    void show_loads();
    void show_times();

    // -1 to 1; another number every 20 ms and for every object.
    double tremble(dictionary::Identity id) const;
    double bus() const;
    double bus_raw(double volts) const;

    ObjectTable& table_;
    const Motion& motion_;
    const Supervision& supervision_;
    std::uint64_t seed_;
    std::unordered_map<dictionary::Identity, Getter> getters_;
    Object& bus_full_scale_;
    Object& overload_full_scale_;
    Object& operating_minutes_;
    Object& enabled_minutes_;
    Object& unsaved_;
};

}  // namespace servo::sim
