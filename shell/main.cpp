// Provvisorio: l'avvio vero (frmSpalsh) arriva con la maschera iniziale.
#include <QApplication>
int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    return 0;
}
