#include "gui/EditorStyle.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPointer>
#include <QStyleOption>

namespace shd::gui {

namespace {
// An icon made from the base style's on first use.
class DeferredIcon : public QIconEngine {
public:
    DeferredIcon(QStyle* base, QStyle::StandardPixmap which, Qt::LayoutDirection direction)
        : base_(base), which_(which), direction_(direction) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        Real().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Real().actualSize(size, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return Real().pixmap(size, mode, state);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state, qreal scale) override {
        return Real().pixmap(size, scale, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        return Real().availableSizes(mode, state);
    }
    void addPixmap(const QPixmap& pixmap, QIcon::Mode mode, QIcon::State state) override {
        Real().addPixmap(pixmap, mode, state);
    }
    void addFile(const QString& fileName, const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        Real().addFile(fileName, size, mode, state);
    }
    QString iconName() override { return Real().name(); }
    bool isNull() override { return Real().isNull(); }
    QIconEngine* clone() const override { return new DeferredIcon(*this); }

private:
    QIcon& Real() {
        if (!made_) {
            made_ = true;
            if (base_) {
                QStyleOption option;
                option.direction = direction_;
                icon_ = base_->standardIcon(which_, &option);
            }
        }
        return icon_;
    }

    QPointer<QStyle> base_;
    QStyle::StandardPixmap which_;
    Qt::LayoutDirection direction_;  // the only part of the option the arrow depends on
    bool made_ = false;
    QIcon icon_;
};
}  // namespace

EditorStyle::EditorStyle(QStyle* base) : QProxyStyle(base) {}

QIcon EditorStyle::standardIcon(StandardPixmap which, const QStyleOption* option, const QWidget* widget) const {
    if (which != SP_ToolBarHorizontalExtensionButton && which != SP_ToolBarVerticalExtensionButton)
        return QProxyStyle::standardIcon(which, option, widget);
    const Qt::LayoutDirection direction = option   ? option->direction
                                          : widget ? widget->layoutDirection()
                                                   : QGuiApplication::layoutDirection();
    return QIcon(new DeferredIcon(baseStyle(), which, direction));
}

}  // namespace shd::gui
