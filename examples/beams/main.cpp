#include "beam_editor.h"

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName("vrn");
    QCoreApplication::setApplicationName("beams");
    beams::BeamEditor editor(50);
    editor.resize(1100, 600);
    editor.show();
    return QApplication::exec();
}
