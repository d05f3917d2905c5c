// The application's style: the platform's own, with the menu bar's overflow
// arrow read only when it is first drawn.
#pragma once

#include <QProxyStyle>

namespace shd::gui {

class EditorStyle : public QProxyStyle {
    Q_OBJECT
public:
    // Takes `base` over, as QProxyStyle does.
    explicit EditorStyle(QStyle* base);

    // A menu bar makes its overflow button, arrow and all, as it is made.
    // Reading the arrow loads the image plugins and decodes a PNG; a menu bar
    // with room for its menus never shows it. So the arrow of a tool bar or
    // menu bar extension is a stand-in that asks the base style for the real
    // one when it is first needed.
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

}  // namespace shd::gui
