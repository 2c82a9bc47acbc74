// The smallest program that opens a serial port with the toolkit and writes a command.

#include <QCoreApplication>
#include <QSerialPort>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  QSerialPort port(QString::fromLocal8Bit(argv[argc - 1]));
  port.setBaudRate(QSerialPort::Baud115200);
  if (!port.open(QIODevice::ReadWrite)) return 1;
  port.write("*IDN?\r");
  port.waitForBytesWritten();
  return QCoreApplication::exec();
}
