// Built with the widgets main: the application must be a QApplication.

#include <QApplication>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

TEST(TestMainWidgets, RunsTestsInAWidgetsApplication)
{
    ASSERT_NE(qobject_cast<QApplication*>(QCoreApplication::instance()), nullptr);
    QWidget widget;
    widget.resize(50, 40);
    widget.show();
    EXPECT_TRUE(widget.isVisible());
}

} // namespace
