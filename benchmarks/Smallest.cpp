// A Qt program with two fields and a button: the minimal cost of the Authenticate dialog.
#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QDialog dialog;
  QFormLayout layout(&dialog);
  layout.addRow("Name:", new QLineEdit);
  layout.addRow("Password:", new QLineEdit);
  layout.addRow(new QPushButton("Authenticate"));
  dialog.setWindowTitle("Authenticate");
  dialog.show();
  return application.exec();
}
