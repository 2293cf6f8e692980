// Window test programs: a QApplication on the offscreen platform, so the real windows are
// built, laid out and painted without a display.
#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
