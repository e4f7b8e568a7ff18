#include "sim/motion_io.h"

namespace servo::sim {

MotionIo::MotionIo(ObjectTable& t)
    : inputs(t), outputs(t), brake(t), does(t), tells(t), speeds(t), positions(t), table(t) {}

}  // namespace servo::sim
