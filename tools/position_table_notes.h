// Addition: lines in words below the table: what a job does or how it ended, and what the pictures
// show.
#pragma once

#include <string>

#include "tools/pos_flow.h"

namespace servo::tools {

std::string job_note(const PosFlow& form);
// A job ended without success: the note is a warning.
bool job_note_warns(const PosFlow& form);
// The end of the motion, and the encoder that it was computed with.
std::string motion_note(const PosFlow& form, const Motion& motion);
// "2 faults, 1 warning, 3 notes", or that there is nothing.
std::string findings_note(const std::vector<Finding>& findings, base::Language language);

}  // namespace servo::tools
