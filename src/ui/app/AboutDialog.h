#pragma once

#include <QDialog>

class QLabel;

// Name, version and how much time the application has saved the user.
class AboutDialog : public QDialog {
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent = nullptr);

    // Reads the saved-time total again; it grows with every save.
    void refreshCredits();
    QLabel* creditsLabel() const { return m_credits; }

private:
    QLabel* m_credits;
};
