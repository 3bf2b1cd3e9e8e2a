#pragma once
// GoogleTest printers for the Qt values tests compare, so that failure
// messages and parameterised test names show them as text rather than as
// bytes or as lists of characters. They live in the global namespace, the
// namespace of the Qt classes, where argument-dependent lookup finds them.

#include <QColor>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* os)
{
    *os << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& list, std::ostream* os)
{
    *os << '{';
    for (int i = 0; i < list.size(); ++i) {
        if (i > 0)
            *os << ", ";
        PrintTo(list[i], os);
    }
    *os << '}';
}

inline void PrintTo(const QPointF& point, std::ostream* os)
{
    *os << '(' << point.x() << ", " << point.y() << ')';
}

inline void PrintTo(const QPoint& point, std::ostream* os)
{
    *os << '(' << point.x() << ", " << point.y() << ')';
}

inline void PrintTo(const QSize& size, std::ostream* os)
{
    *os << size.width() << " x " << size.height();
}

// A rectangle as its top left corner and its size.
inline void PrintTo(const QRectF& rect, std::ostream* os)
{
    *os << '(' << rect.x() << ", " << rect.y() << ") " << rect.width() << " x " << rect.height();
}

inline void PrintTo(const QRect& rect, std::ostream* os)
{
    *os << '(' << rect.x() << ", " << rect.y() << ") " << rect.width() << " x " << rect.height();
}

// #aarrggbb, so that a difference in alpha shows.
inline void PrintTo(const QColor& color, std::ostream* os)
{
    *os << (color.isValid() ? color.name(QColor::HexArgb).toStdString() : std::string("invalid colour"));
}
