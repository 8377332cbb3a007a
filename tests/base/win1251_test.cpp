// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "support/printing.h"

#include <gtest/gtest.h>

namespace {

TEST(Win1251, KeepsEveryByteAndReplacesWhatItLacks) {
    std::string all;
    for (int value = 0; value < 256; ++value) {
        all.push_back(static_cast<char>(value));
    }
    const QString text = base::win1251::decode(all);
    EXPECT_EQ(base::win1251::encode(text).toStdString(), all);
    EXPECT_EQ(text.sliced(0xC0), "АБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя");
    EXPECT_EQ(text[0x98], QChar(0x98));
    EXPECT_EQ(base::win1251::encode(u"ж中"), QByteArray("\xE6\x1A"));
}

} // namespace
