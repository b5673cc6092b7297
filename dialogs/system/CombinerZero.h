#pragma once

#include <QMainWindow>

#include <memory>

namespace Ui {
class CombinerZero;
}

/// Shows the combiner's AGC levels and test points while the operator zeroes the combiner. It sends nothing; its opener
/// feeds it, and deletes it after it has closed.
class CombinerZero : public QMainWindow
{
    Q_OBJECT

public:
    explicit CombinerZero(QWidget *parent = nullptr);
    ~CombinerZero() override;

    // Values are shown as the card reports them.
    void setCh1In(const QString &value);
    void setCh1Out(const QString &value);
    void setCh2In(const QString &value);
    void setCh2Out(const QString &value);
    void setTP2(const QString &value);
    void setTP4(const QString &value);

Q_SIGNALS:
    /// The operator closes the window, by its button or otherwise; emitted once.
    void closePressed();

public Q_SLOTS:
    void on_btnClose_clicked();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void reportClosing();

    std::unique_ptr<Ui::CombinerZero> ui;
    bool m_isClosingReported = false;
};
