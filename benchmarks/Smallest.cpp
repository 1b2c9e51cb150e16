// The smallest Qt program with two fields and a button: the minimal cost of the Authenticate
// dialog.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QDialog dialog;
  QVBoxLayout layout(&dialog);
  QLineEdit name(&dialog);
  QLineEdit password(&dialog);
  QPushButton button("Authenticate", &dialog);
  password.setEchoMode(QLineEdit::Password);
  for (QWidget* widget : {static_cast<QWidget*>(&name), static_cast<QWidget*>(&password),
                          static_cast<QWidget*>(&button)}) {
    layout.addWidget(widget);
  }
  dialog.setWindowTitle("Authenticate");
  dialog.show();
  return application.exec();
}
