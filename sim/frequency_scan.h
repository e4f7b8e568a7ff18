// The frequency scan: a sine in the current command, correlated with the answer of the speed.
//
// AGREED (note to engineer D from the lead, replace by your header): the workstation's loop model
// takes the plant as respX / magCurrent / 576 and respY / magCurrent / 576, WITHOUT dividing by the
// command's own sums, whereas FirstAnalyse divides by commandMag and subtracts commandPhase. Both
// agree only when the current command at the measured frequency is the excitation itself:
// commandMag = 1 and commandPhase = 0. So during a scan the velocity loop is open at the measured
// frequencies (only a slow hold, far below the start frequency, keeps position and bias speed), and
// the excitation's phase is the reference of the correlation. |respX + j respY| / 576 / magCurrent
// and `magnitude` / 100 are then the same plant, speed (in the unit that you derive and document) per
// unit of current command, with motor, load, current loop and speed feedback in it.
// Preferably choose the unit so that the model "open velocity loop = Kvp times plant" has a handy,
// documented factor (loopGain 100 is the default of the tuner's box): write that factor down in
// /tmp/scan_ready.txt; engineer B needs it for the loop model.
#pragma once
