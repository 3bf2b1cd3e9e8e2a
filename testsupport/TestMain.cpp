// The main of the test executables: runs every test inside one Qt application,
// so that fonts, images, painters (and, built with ORV_TEST_MAIN_WIDGETS,
// widgets) work in any test without each one creating the application itself.
// The platform is "offscreen" unless QT_QPA_PLATFORM names another, so the
// tests need no display.

#ifdef ORV_TEST_MAIN_WIDGETS
#include <QApplication>
using TestApplication = QApplication;
#else
#include <QGuiApplication>
using TestApplication = QGuiApplication;
#endif

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // GoogleTest takes its own flags out of argv first; Qt sees only what remains.
    ::testing::InitGoogleTest(&argc, argv);
    // The application lives until the process ends and is never destroyed:
    // Qt 5's offscreen platform does not free its screen when the application
    // goes, which the leak checker of the sanitizer build would report.
    static TestApplication* const application = new TestApplication(argc, argv);
    Q_UNUSED(application);
    return RUN_ALL_TESTS();
}
