#include "shell/formats.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(formats, images_de_nombres) {
    EXPECT_EQ(format_image(3.14159, "0.00"), "3.14");
    EXPECT_EQ(format_image(-0.5, "00.0"), "-00.5");
    EXPECT_EQ(format_image(7, "00"), "07");
    EXPECT_EQ(format_image(123.4567, "#0.0000000000"), "123.4567000000");
    EXPECT_EQ(format_image(1.23e-5, "0.0000E+00"), "1.2300E-05");
    EXPECT_EQ(format_image(9.99999e99, "0.0000e+00"), "1.0000e+100");
    EXPECT_EQ(format_image(21.456, "0.00C"), "21.46C");
    EXPECT_EQ(format_image(1.5, "0.0 %"), "1.5 %");
    EXPECT_EQ(format_image(-0.001, "0.00"), "0.00");
    EXPECT_EQ(format_image(2.5, "0.0##"), "2.5");
    EXPECT_EQ(format_image(2.0, "0.##"), "2");
    EXPECT_EQ(format_image(0.25, "#.00"), ".25");
    EXPECT_EQ(format_image(std::nan(""), "0.00"), "nan");
}

TEST(formats, durees) {
    EXPECT_EQ(format_duree(0), "00:00:00");
    EXPECT_EQ(format_duree(3661), "01:01:01");
    EXPECT_EQ(format_duree(360000), "100:00:00");
    EXPECT_EQ(format_duree(-61), "-00:01:01");
}

TEST(formats, lecture_et_forme_courte) {
    double x = 42.0;
    EXPECT_TRUE(lit_nombre(" 1,5 ", x));
    EXPECT_EQ(x, 1.5);
    EXPECT_TRUE(lit_nombre("+2.5e-3", x));
    EXPECT_EQ(x, 0.0025);
    for (const char* faux :
         {"", " ", "1.2.3", "1,2,3", "abc", "1 m", "nan", "inf", "-inf", "1e999", "0x10", "+-1", "--1"})
        EXPECT_FALSE(lit_nombre(faux, x)) << faux;
    EXPECT_EQ(x, 0.0025) << "a refused text leaves the value";
    for (double v : {0.1, 1.0 / 3.0, 1e300, -7.25, 18707.55001}) {
        ASSERT_TRUE(lit_nombre(format_court(v), x));
        EXPECT_EQ(x, v);
    }
}
