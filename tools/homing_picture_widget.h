// The picture of the homing method, as large as its room allows. Without one it says why in words.
#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>
#include <string>

namespace servo::tools {

class HomingPictureWidget final : public QWidget {
    Q_OBJECT

  public:
    explicit HomingPictureWidget(QWidget* parent);

    // `name` tells pictures apart; one that cannot be read leaves the old one.
    void show_picture(const std::string& name, const std::string& bytes);
    void show_words(const QString& words);  // while there is no picture
    const QImage& image() const { return image_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return false; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage image_;
    QString words_;
    QPixmap scaled_;  // of `image_`, for the size and the screen of the last painting
};

}  // namespace servo::tools
