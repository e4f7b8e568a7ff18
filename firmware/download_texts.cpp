// Captions of the controls, in both languages.
#include <array>

#include "firmware/download.h"

namespace servo::firmware {

namespace {

constexpr std::array<ControlText, 18> kTexts{{
    {"Command1", "加载文件/Load File"},
    {"Command4", "下载/Download"},
    {"Command2", "读取CRC/Read CRC"},
    {"Command3", "测试/Test"},
    {"Check1", "批量下载/Download a lot"},
    {"Command5", "选择Ini"},
    {"Label5", "产品名称/ProductName"},
    {"Label7", "产品条码/ProductSN"},
    {"Label6", "固件名称/FW Name"},
    {"Label9", "条码比较值/SN Comp."},
    {"Label11", "条码长度/SN Length"},
    {"Label14", "比较位置/ComparePos"},
    {"Label4", "软件版本:/Software Version"},
    {"Label16", "当前固件校验码/Current FW CRC:"},
    {"Label19",
     "注意：如果在下载过程中通讯中断，请先对驱动器重新上电，然后先点击[下载]按钮，再打开通讯，"
     "否则无法正常下载。/Note:if the communication break while downloading,please first power-on "
     "again,then press [Download] button,and finally connect.Otherwise will fail."},
    {"Label13", "NULL"},
    {"Text5", "NULL"},
    {"Label1", "NULL"},
}};

}  // namespace

std::span<const ControlText> control_texts() {
    return kTexts;
}

}  // namespace servo::firmware
