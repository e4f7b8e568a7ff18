if(TARGET servo_firmware)
    servo_fuzz(firmware_image SOURCES firmware_image.cpp LINKS servo_firmware)
    servo_fuzz(firmware_batch SOURCES firmware_batch.cpp LINKS servo_firmware)
endif()
