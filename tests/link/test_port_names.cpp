#include <gtest/gtest.h>

#include "link/port_names.h"

using servo::link::port_number;
using servo::link::PortNames;

TEST(PortNames, NumberFollowsFromTheNameAlone) {
    const PortNames names;
    EXPECT_EQ(names.text_of("/dev/ttyS0"), "COM1");
    EXPECT_EQ(names.text_of("/dev/ttyS9"), "COM10");
    EXPECT_EQ(names.text_of("/dev/ttyUSB0"), "COM11");
    EXPECT_EQ(names.text_of("/dev/ttyACM3"), "COM24");
    EXPECT_EQ(names.text_of("/dev/ttyS10"), "COM110");
    EXPECT_EQ(names.text_of("/dev/ttyUSB10"), "COM210");
    EXPECT_EQ(names.text_of("/dev/ttyACM99"), "COM399");
}

TEST(PortNames, TextLeadsBackToTheDevice) {
    const PortNames names;
    for (const char* stem : {"/dev/ttyS", "/dev/ttyUSB", "/dev/ttyACM"})
        for (int i = 0; i < 100; ++i) {
            const std::string device = stem + std::to_string(i);
            EXPECT_EQ(names.device_of(names.text_of(device)), device);
        }
}

TEST(PortNames, LettersBeforeTheNumberHaveAnyCase) {
    const PortNames names;
    EXPECT_EQ(names.device_of("Com1"), "/dev/ttyS0");
    EXPECT_EQ(names.device_of("com11"), "/dev/ttyUSB0");
}

TEST(PortNames, TextWithoutANumberIsNoDevice) {
    const PortNames names;
    for (const char* text : {"", "COM", "COMx", "COM0", "COM-1", "COM1x", "C1", "COM99999999999"})
        EXPECT_EQ(names.device_of(text), std::nullopt) << text;
    EXPECT_EQ(port_number("COM12"), 12);
    EXPECT_EQ(port_number("COMx"), 0);
}

TEST(PortNames, GivenDevicesAreCountedFrom31InTheirOrder) {
    PortNames names;
    EXPECT_EQ(names.give("/dev/pts/7"), "COM31");
    EXPECT_EQ(names.give("/tmp/line"), "COM32");
    EXPECT_EQ(names.give("/dev/pts/7"), "COM31") << "given twice";
    EXPECT_EQ(names.device_of("COM31"), "/dev/pts/7");
    EXPECT_EQ(names.device_of("COM32"), "/tmp/line");
    EXPECT_EQ(names.device_of("COM33"), std::nullopt);
}

TEST(PortNames, GivenDeviceWithANumberOfItsOwnKeepsIt) {
    PortNames names;
    EXPECT_EQ(names.give("/dev/ttyUSB2"), "COM13");
    EXPECT_TRUE(names.given().empty());
}

TEST(PortNames, OtherKindsHaveTheSameNumberInEveryRun) {
    PortNames names;
    const std::string text = names.text_of("/dev/ttyAMA0");
    EXPECT_EQ(text, PortNames().text_of("/dev/ttyAMA0"));
    EXPECT_GE(port_number(text), 1000);
    EXPECT_EQ(names.device_of(text), std::nullopt);
    names.found("/dev/ttyAMA0");
    EXPECT_EQ(names.device_of(text), "/dev/ttyAMA0");
}
