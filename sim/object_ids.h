// Objects that a part of the drive stands behind: index and sub-index.
#pragma once

#include "dictionary/keys.h"

namespace servo::sim::ids {

using dictionary::Identity;

// Service.
inline constexpr Identity kErrorRegister = 0x100100;
inline constexpr Identity kStatusRegister = 0x100200;
inline constexpr Identity kErrorField = 0x100300;  // :00 count, :01 the newest
inline constexpr Identity kSoftwareVersion = 0x100A00;
inline constexpr Identity kStoreParameters = 0x101000;    // :01 to :04
inline constexpr Identity kRestoreParameters = 0x101100;  // :01 to :04
inline constexpr Identity kTimeStamp = 0x101300;
inline constexpr Identity kReceivePdo = 0x140000;      // 1400 to 1407, and so the next
inline constexpr Identity kReceiveMapping = 0x160000;  // :00 count, :01 to :08
inline constexpr Identity kTransmitPdo = 0x180000;
inline constexpr Identity kTransmitMapping = 0x1A0000;
inline constexpr Identity kFirmwareCheck = 0x1F5601;
inline constexpr Identity kSerialBaud = 0x2FE200;  // divider
inline constexpr Identity kSerialId = 0x2FE300;
inline constexpr Identity kReplyDelay = 0x2FE400;  // 100 us
inline constexpr Identity kReceiveErrors = 0x2FEA00;
inline constexpr Identity kControlParameters = 0x2FF001;
inline constexpr Identity kCommunicationParameters = 0x2FF002;
inline constexpr Identity kMotorParameters = 0x2FF003;
inline constexpr Identity kStorageState = 0x2FF004;
inline constexpr Identity kUnsavedChanges = 0x2FF100;
inline constexpr Identity kOperatingMinutes = 0x2FF200;
inline constexpr Identity kEnabledMinutes = 0x2FF300;
inline constexpr Identity kSecondsSincePowerUp = 0x2FF500;
inline constexpr Identity kEnableAtPowerUp = 0x2FFB00;
inline constexpr Identity kStateInWords = 0x2FFE00;
inline constexpr Identity kRestart = 0x2FFF00;

// Faults.
inline constexpr Identity kFaultWord1 = 0x260100;
inline constexpr Identity kFaultWord2 = 0x260200;
inline constexpr Identity kExtendedFaults = 0x260300;
inline constexpr Identity kWarnings = 0x260400;
inline constexpr Identity kFaultMask1 = 0x260501;
inline constexpr Identity kFaultRamp1 = 0x260502;
inline constexpr Identity kFaultSelfReset1 = 0x260503;
inline constexpr Identity kFaultMask2 = 0x260504;
inline constexpr Identity kFaultRamp2 = 0x260505;
inline constexpr Identity kFaultSelfReset2 = 0x260506;
inline constexpr Identity kFaultReset = 0x260600;
inline constexpr Identity kHistoryCount = 0x260700;
inline constexpr Identity kHistoryClear = 0x260800;
inline constexpr Identity kFaultsInAll = 0x260900;
inline constexpr Identity kHistory = 0x261000;  // 2610 to 2617, the newest first

// Recorder.
inline constexpr Identity kRecorderSlots = 0x230001;      // :01 to :04
inline constexpr Identity kRecorderWideSlots = 0x230005;  // :05 and :06
inline constexpr Identity kRecorderCommand = 0x230007;
inline constexpr Identity kRecorderPeriod = 0x230008;
inline constexpr Identity kRecorderOffset = 0x230009;
inline constexpr Identity kRecorderCount = 0x23000A;
inline constexpr Identity kRecorderEdge = 0x23000B;
inline constexpr Identity kRecorderTrigger = 0x23000C;
inline constexpr Identity kRecorderLevel = 0x23000D;
inline constexpr Identity kRecorderTaken = 0x23000E;
inline constexpr Identity kRecorderTriggerPosition = 0x23000F;
inline constexpr Identity kRecorderRowBytes = 0x230010;
inline constexpr Identity kRecorderBufferBytes = 0x230011;
inline constexpr Identity kRecorderStopAtFault = 0x230012;
inline constexpr Identity kRecorderBuffer = 0x230013;

// Device control.
inline constexpr Identity kErrorCode = 0x603F00;
inline constexpr Identity kControlWord = 0x604000;
inline constexpr Identity kStatusWord = 0x604100;
inline constexpr Identity kQuickStopOption = 0x605A00;
inline constexpr Identity kShutdownOption = 0x605B00;
inline constexpr Identity kDisableOption = 0x605C00;
inline constexpr Identity kHaltOption = 0x605D00;
inline constexpr Identity kFaultOption = 0x605E00;
inline constexpr Identity kMode = 0x606000;
inline constexpr Identity kModeDisplay = 0x606100;

// Position.
inline constexpr Identity kPositionDemand = 0x606200;
inline constexpr Identity kPositionCounts = 0x606300;
inline constexpr Identity kPosition = 0x606400;
inline constexpr Identity kFollowingWindow = 0x606500;
inline constexpr Identity kFollowingTime = 0x606600;
inline constexpr Identity kPositionWindow = 0x606700;
inline constexpr Identity kPositionWindowTime = 0x606800;
inline constexpr Identity kTargetPosition = 0x607A00;
inline constexpr Identity kHomeOffset = 0x607C00;
inline constexpr Identity kLowestPosition = 0x607D01;
inline constexpr Identity kHighestPosition = 0x607D02;
inline constexpr Identity kPolarity = 0x607E00;
inline constexpr Identity kMaxProfileSpeed = 0x607F00;
inline constexpr Identity kProfileSpeed = 0x608100;
inline constexpr Identity kAcceleration = 0x608300;
inline constexpr Identity kDeceleration = 0x608400;
inline constexpr Identity kQuickStopDeceleration = 0x608500;
inline constexpr Identity kHomingMethod = 0x609800;
inline constexpr Identity kInterpolationPosition = 0x60C101;
inline constexpr Identity kCycleValue = 0x60C201;
inline constexpr Identity kCycleExponent = 0x60C202;
inline constexpr Identity kFollowingError = 0x60F400;
inline constexpr Identity kControlEffort = 0x60FA00;
inline constexpr Identity kPositionDemandCounts = 0x60FC00;
inline constexpr Identity kTargetAtOnce = 0x212001;
inline constexpr Identity kDistanceToGo = 0x212003;
inline constexpr Identity kPositionInTurn = 0x212004;
inline constexpr Identity kTurns = 0x212005;
inline constexpr Identity kClearPosition = 0x212006;
inline constexpr Identity kMoves = 0x21200A;
inline constexpr Identity kGreatestFollowingError = 0x21200B;

// Homing.
inline constexpr Identity kHomingSpeed = 0x609901;
inline constexpr Identity kHomingZeroSpeed = 0x609902;
inline constexpr Identity kHomingAcceleration = 0x609A00;
inline constexpr Identity kHomingAtPowerUp = 0x215001;
inline constexpr Identity kHomingCurrent = 0x215002;
inline constexpr Identity kHomingBlind = 0x215003;
inline constexpr Identity kHomeOffsetMode = 0x215004;
inline constexpr Identity kHomingTimeout = 0x215005;
inline constexpr Identity kHomingState = 0x215006;
inline constexpr Identity kHomingStep = 0x215007;
inline constexpr Identity kHomingIndex = 0x215008;
inline constexpr Identity kHomingStopTime = 0x215009;
inline constexpr Identity kHomingRequired = 0x21500A;
inline constexpr Identity kHomingTravel = 0x21500C;
inline constexpr Identity kHomingClear = 0x21500D;
inline constexpr Identity kHomingTime = 0x21500E;

// To and fro.
inline constexpr Identity kReverseType = 0x205001;
inline constexpr Identity kReversePlaceA = 0x205002;
inline constexpr Identity kReversePlaceB = 0x205003;
inline constexpr Identity kForwardSpeed = 0x205004;
inline constexpr Identity kBackwardSpeed = 0x205005;
inline constexpr Identity kForwardTime = 0x205006;
inline constexpr Identity kBackwardTime = 0x205007;
inline constexpr Identity kReverseAcceleration = 0x205008;
inline constexpr Identity kReverseDeceleration = 0x205009;
inline constexpr Identity kReversePause = 0x20500A;
inline constexpr Identity kReverseCycles = 0x20500B;
inline constexpr Identity kReverseCyclesDone = 0x20500C;
inline constexpr Identity kReverseState = 0x20500D;
inline constexpr Identity kReverseTravel = 0x20500E;

// Velocity.
inline constexpr Identity kSpeedSensor = 0x606900;
inline constexpr Identity kSpeedDemand = 0x606B00;
inline constexpr Identity kSpeed = 0x606C00;
inline constexpr Identity kSpeedWindow = 0x606D00;
inline constexpr Identity kSpeedWindowTime = 0x606E00;
inline constexpr Identity kSpeedThreshold = 0x606F00;
inline constexpr Identity kSpeedThresholdTime = 0x607000;
inline constexpr Identity kTargetSpeed = 0x60FF00;
inline constexpr Identity kOverSpeed = 0x213009;
inline constexpr Identity kGreatestSpeed = 0x21300C;

// Torque and current.
inline constexpr Identity kTargetTorque = 0x607100;
inline constexpr Identity kMaxTorque = 0x607200;
inline constexpr Identity kMaxCurrent = 0x607300;
inline constexpr Identity kTorqueDemand = 0x607400;
inline constexpr Identity kRatedCurrent = 0x607500;
inline constexpr Identity kRatedTorque = 0x607600;
inline constexpr Identity kTorque = 0x607700;
inline constexpr Identity kCurrent = 0x607800;
inline constexpr Identity kBusMillivolts = 0x607900;
inline constexpr Identity kTorqueSlope = 0x608700;
inline constexpr Identity kPositiveTorque = 0x60E000;
inline constexpr Identity kNegativeTorque = 0x60E100;
inline constexpr Identity kTorqueSource = 0x214001;
inline constexpr Identity kTorqueSpeedLimit = 0x214004;
inline constexpr Identity kGreatestCurrent = 0x214009;
inline constexpr Identity kEffectiveCurrent = 0x21400A;

// Loops.
inline constexpr Identity kCurrentKp = 0x60F601;
inline constexpr Identity kCurrentKi = 0x60F602;
inline constexpr Identity kCurrentBandwidth = 0x60F603;
inline constexpr Identity kCurrentGainSource = 0x60F604;
inline constexpr Identity kTorqueFilter = 0x60F605;
inline constexpr Identity kTargetCurrent = 0x60F608;
inline constexpr Identity kCurrentDemand = 0x60F60C;
inline constexpr Identity kCurrentMeasured = 0x60F60D;
inline constexpr Identity kPhaseU = 0x60F60F;
inline constexpr Identity kPhaseV = 0x60F610;
inline constexpr Identity kOverloadFullScale = 0x60F611;
inline constexpr Identity kMotorOverload = 0x60F612;
inline constexpr Identity kBusFullScale = 0x60F613;
inline constexpr Identity kBusReading = 0x60F614;
inline constexpr Identity kDriveOverload = 0x60F615;
inline constexpr Identity kVoltageQ = 0x60F616;
inline constexpr Identity kElectricalAngle = 0x60F618;
inline constexpr Identity kVelocityKp = 0x60F901;
inline constexpr Identity kVelocityKi = 0x60F902;
inline constexpr Identity kVelocityKiFraction = 0x60F903;
inline constexpr Identity kIntegralLimit = 0x60F904;
inline constexpr Identity kSpeedFilter = 0x60F905;
inline constexpr Identity kSpeedFilterType = 0x60F906;
inline constexpr Identity kInertiaForward = 0x60F90A;
inline constexpr Identity kReferenceShare = 0x60F90B;
inline constexpr Identity kSpeedError = 0x60F90E;
inline constexpr Identity kIntegral = 0x60F90F;
inline constexpr Identity kCurrentLimit = 0x60F911;
inline constexpr Identity kVelocityBandwidth = 0x60F912;
inline constexpr Identity kSpeedFiltered = 0x60F916;
inline constexpr Identity kSpeedUnfiltered = 0x60F917;
inline constexpr Identity kForwardCurrent = 0x60F919;
inline constexpr Identity kVelocityLoopState = 0x60F91A;
inline constexpr Identity kPositionKp = 0x60FB01;
inline constexpr Identity kSpeedForward = 0x60FB02;
inline constexpr Identity kAccelerationForward = 0x60FB03;
inline constexpr Identity kPositionLoopLimit = 0x60FB06;
inline constexpr Identity kFollowingError16 = 0x60FB08;
inline constexpr Identity kVelocityGainScale = 0x304007;

// Frequency scan.
inline constexpr Identity kScanCommand = 0x304001;
inline constexpr Identity kScanFirst = 0x304002;
inline constexpr Identity kScanLast = 0x304003;
inline constexpr Identity kScanStep = 0x304004;
inline constexpr Identity kScanWindow = 0x304005;
inline constexpr Identity kScanFrequency = 0x304006;
inline constexpr Identity kScanDone = 0x304008;
inline constexpr Identity kScanSettle = 0x304009;
inline constexpr Identity kScanShift = 0x30400A;
inline constexpr Identity kScanMeasure = 0x30400B;
inline constexpr Identity kScanBias = 0x30400C;
inline constexpr Identity kScanTravel = 0x30400D;
inline constexpr Identity kScanResult = 0x30400E;
inline constexpr Identity kScanInjection = 0x30400F;
inline constexpr Identity kScanMostPoints = 0x304010;
inline constexpr Identity kScanAmplitude = 0x60F910;

// Motor and drive.
inline constexpr Identity kResolution = 0x641003;
inline constexpr Identity kPolePairs = 0x641004;
inline constexpr Identity kMotorRatedCurrent = 0x641008;
inline constexpr Identity kMotorOverloadTime = 0x641009;
inline constexpr Identity kMotorMaxCurrent = 0x64100A;
inline constexpr Identity kInductance = 0x64100B;
inline constexpr Identity kResistance = 0x64100C;
inline constexpr Identity kVoltageConstant = 0x64100D;
inline constexpr Identity kTorqueConstant = 0x64100E;
inline constexpr Identity kRotorInertia = 0x64100F;
inline constexpr Identity kMotorHot = 0x64101E;
inline constexpr Identity kMotorWarm = 0x64101F;
inline constexpr Identity kMotorTemperature = 0x641020;
inline constexpr Identity kInertiaRatio = 0x641021;
inline constexpr Identity kDriveRatedCurrent = 0x651002;
inline constexpr Identity kPeakCurrent = 0x651003;
inline constexpr Identity kBusHigh = 0x651005;
inline constexpr Identity kBusLow = 0x651006;
inline constexpr Identity kBrakeOhm = 0x651007;
inline constexpr Identity kBrakeWatt = 0x651008;
inline constexpr Identity kBrakeTime = 0x651009;
inline constexpr Identity kBrakeLevel = 0x65100A;
inline constexpr Identity kDriveTemperature = 0x65100B;
inline constexpr Identity kSerialProtocol = 0x65100C;
inline constexpr Identity kDriveHot = 0x65100D;
inline constexpr Identity kBrakeLoad = 0x65100F;
inline constexpr Identity kBrakeDuty = 0x651010;
inline constexpr Identity kBoardTemperature = 0x651013;
inline constexpr Identity kLogicMillivolts = 0x651014;
inline constexpr Identity kGreatestBus = 0x651017;
inline constexpr Identity kLeastBus = 0x651018;
inline constexpr Identity kPeakTime = 0x65101B;
inline constexpr Identity kOutputPower = 0x65101C;
inline constexpr Identity kProcessorLoad = 0x2FFA00;
inline constexpr Identity kAnalogVoltage1 = 0x203004;
inline constexpr Identity kAnalogVoltage2 = 0x203104;

// Digital inputs and outputs.
inline constexpr Identity kInputSimulate = 0x201001;
inline constexpr Identity kInputPolarity = 0x201002;
inline constexpr Identity kInputFunctions = 0x201003;  // :03 to :09, of inputs 1 to 7
inline constexpr Identity kInputState = 0x20100A;
inline constexpr Identity kInputLevels = 0x20100B;
inline constexpr Identity kInputFilter = 0x20100C;  // 0.1 ms
inline constexpr Identity kOutputSimulate = 0x20100D;
inline constexpr Identity kOutputPolarity = 0x20100E;
inline constexpr Identity kOutputFunctions = 0x20100F;  // :0F to :13, of outputs 1 to 5
inline constexpr Identity kOutputPins = 0x201014;
inline constexpr Identity kOutputState = 0x201015;
inline constexpr Identity kInputFunction8 = 0x20101D;
inline constexpr Identity kOutputFunctions6 = 0x20101E;  // :1E and :1F, of outputs 6 and 7
inline constexpr Identity kBrakeRelease = 0x201101;      // ms
inline constexpr Identity kBrakeSpeed = 0x201103;        // rpm
inline constexpr Identity kBrakeLongest = 0x201104;      // ms
inline constexpr Identity kBrakeByHand = 0x201105;
inline constexpr Identity kPositiveLimitAction = 0x201106;
inline constexpr Identity kNegativeLimitAction = 0x201107;
inline constexpr Identity kResetInputEdge = 0x201108;
inline constexpr Identity kEnableInputStyle = 0x201109;
inline constexpr Identity kReadyCondition = 0x20110A;
inline constexpr Identity kMotorErrorDelay = 0x20110B;  // ms
inline constexpr Identity kIndexWidth = 0x20110C;       // ms
inline constexpr Identity kOutputHold = 0x20110E;       // ms
inline constexpr Identity kTorqueOffState = 0x20110F;
inline constexpr Identity kInputCounters = 0x201201;  // :01 to :04
inline constexpr Identity kLastInput = 0x201205;
inline constexpr Identity kLastOutput = 0x201206;
inline constexpr Identity kMultiOutputs = 0x201301;  // source, low, high, style; three times
inline constexpr Identity kMultiInputs = 0x201401;   // :01 to :03
inline constexpr Identity kCapturedPosition = 0x201404;
inline constexpr Identity kFastCaptures = 0x201405;  // :05 and :06
inline constexpr Identity kFastCaptureEdges = 0x201407;
inline constexpr Identity kActivateStyle = 0x201408;
inline constexpr Identity kDinSpeeds = 0x202001;  // :01 to :08
inline constexpr Identity kDinSpeedAcceleration = 0x202009;
inline constexpr Identity kDinSpeedDeceleration = 0x20200A;
inline constexpr Identity kDinSpeedIndex = 0x20200B;
inline constexpr Identity kDinSpeedWithout = 0x20200C;
inline constexpr Identity kModeSelect0 = 0x20200D;
inline constexpr Identity kModeSelect1 = 0x20200E;
inline constexpr Identity kDinSpeedDelay = 0x20200F;  // ms
inline constexpr Identity kDinSpeedInversion = 0x202010;
inline constexpr Identity kDinSpeedStop = 0x202011;
inline constexpr Identity kDinSpeedTarget = 0x202012;
inline constexpr Identity kDinPositions = 0x202101;       // :01 to :08
inline constexpr Identity kDinPositionSpeeds = 0x202109;  // :09 to :10
inline constexpr Identity kDinPositionAcceleration = 0x202111;
inline constexpr Identity kDinPositionDeceleration = 0x202112;
inline constexpr Identity kDinPositionStyle = 0x202113;
inline constexpr Identity kDinPositionIndex = 0x202114;
inline constexpr Identity kDinPositionTrigger = 0x202115;
inline constexpr Identity kDinPositionDelay = 0x202116;  // ms
inline constexpr Identity kDinPositionInterruption = 0x202117;
inline constexpr Identity kDinPositionNeedsHome = 0x202119;
inline constexpr Identity kDinPositionTarget = 0x20211A;
inline constexpr Identity kEnableSource = 0x2FFC00;
inline constexpr Identity kLimitDeceleration = 0x212008;
inline constexpr Identity kReachedHold = 0x212009;  // ms
inline constexpr Identity kSpeedSource = 0x213001;
inline constexpr Identity kSwitchedMaxCurrent = 0x214005;
inline constexpr Identity kCurrentWarning = 0x21400E;  // percent
inline constexpr Identity kStandardInputs = 0x60FD00;
inline constexpr Identity kStandardOutputs = 0x60FE01;
inline constexpr Identity kStandardOutputMask = 0x60FE02;

// Position table.
inline constexpr Identity kTableAccelerations = 0x310001;  // :01 to :08
inline constexpr Identity kTableDecelerations = 0x310101;  // :01 to :08
inline constexpr Identity kTableTargets = 0x310201;        // :01 to :20, and so the next
inline constexpr Identity kTableSpeeds = 0x310301;
inline constexpr Identity kTableDelays = 0x310401;  // ms
inline constexpr Identity kTableControls = 0x310501;
inline constexpr Identity kTableLoops = 0x310601;
inline constexpr Identity kTableRamps = 0x310701;
inline constexpr Identity kTableIndex = 0x311001;
inline constexpr Identity kTableStartIndex = 0x311002;
inline constexpr Identity kTableCommand = 0x311003;
inline constexpr Identity kTableState = 0x311004;
inline constexpr Identity kTableLoopsLeft = 0x311005;
inline constexpr Identity kTableConditions = 0x311006;
inline constexpr Identity kTableIndexInputs = 0x311007;
inline constexpr Identity kTableStopRamp = 0x311008;
inline constexpr Identity kTableEnable = 0x311009;
inline constexpr Identity kTableNeedsHome = 0x31100A;
inline constexpr Identity kTableRuns = 0x31100B;
inline constexpr Identity kTableErrorStep = 0x31100C;

}  // namespace servo::sim::ids
