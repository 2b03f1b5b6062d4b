// VIRA cadtools in English. Left: the module's own text; right: what an English-speaking surveyor reads.
#include "lang/ViraTranslation.h"
#include "support/KoVersionRecord.h"

KO_VERSION_RECORD(KO_VERSION_VALUE("CompanyName", "Halvern Optik")
                  KO_VERSION_VALUE("FileDescription", "VIRA cadtools English resources")
                  KO_VERSION_VALUE("FileVersion", VIRA_VERSION)
                  KO_VERSION_VALUE("OriginalFilename", "ViraCadtoolsV10_ENG.so")
                  KO_VERSION_VALUE("ProductName", "TRELLANOVA 10")
                  KO_VERSION_VALUE("ProductVersion", VIRA_VERSION));

namespace {

constexpr ViraTranslation kEnglish[] = {
    // Drawing transformation (dialog 4000).
    {L"Ganze Zeichnung verschieben und drehen", L"Move and Rotate the Whole Drawing"},
    {L"Picken Sie Punkte in der Zeichnung und  geben Sie die Koordinaten ein wohin diese Punkte "
     L"transformiert werden sollen. ",
     L"Pick points in the drawing and enter the coordinates these points are to be moved to."},
    {L"Ist-Kooridnaten Zeichnungspunkt", L"Current coordinates of drawing point"},
    {L"Soll- Koordinaten", L"Target coordinates"},
    {L"Zeichnung skalieren falls Sollkoordinaten  einen Maßstabsfaktor ergeben.",
     L"Scale the drawing if the target coordinates give a scale factor."},
    {L"Transformation die durchgeführt werden wird:", L"Transformation to be applied:"},
    {L"Abbrechen", L"Cancel"},
    {L"OK", L"OK"},

    // Point capture (dialog 4001).
    {L"Punkte erfassen", L"Capture Points"},
    {L"Nächste Punktnummer:", L"Next point number:"},
    {L"Speichern als...", L"Save As..."},

    // New version notice (dialog 4007).
    {L"VIRA cadtools", L"VIRA cadtools"},
    {L"Eine aktuellere Version ist verfügbar. Klicken Sie auf den Link um diese herunterzuladen.",
     L"A newer version is available. Click the link to download it."},

    // Context menu of the point lists (menus 4002 and 4003, strings 3 to 7).
    {L"Spalte aufsteigend sortieren", L"Sort Column ascending"},
    {L"Spalte absteigend sortieren", L"Sort Column descending"},
    {L"Microsoft Excel...", L"Microsoft Excel..."},
    {L"Drucken", L"Print"},
    {L"Löschen", L"Delete"},
    {L"Liste", L"List"},

    // The list control is older than the system's (strings 1, German, and 2, every other language).
    {L"Auf Ihrem System sind einige Systemdateien veraltet, TRELLANOVA benötigt aktuellere Versionen.\n"
     L"Um aktuellere Systemdateien zu erhalten, installieren Sie am besten den Microsoft Internet Explorer 5.x "
     L"oder höher.\n\nSie finden eine aktuelle Version des Internet Explorers auf der Halvern Installations CD.\n\n"
     L"Wenn Sie diese Meldung Ignorieren, versucht TRELLANOVA 10 weiterzulaufen. Vermutlich wird es aber "
     L"abstürzen.\"",
     L"Some system files on this computer are out of date; TRELLANOVA needs more recent versions.\n"
     L"The easiest way to get them is to install Microsoft Internet Explorer 5.x or later.\n\n"
     L"You will find a current version of Internet Explorer on the Halvern installation CD.\n\n"
     L"If you ignore this message, TRELLANOVA 10 will try to carry on, but it will probably crash."},
    {L"On your system some system files became outdated, TRELLANOVA need more current versions.\n"
     L"In order to get more current system files, install the Microsoft Internet Explorer 5.x or higher.\n\n"
     L"You will find a current version of the Internet Explorer on the Halvern installation CD.\n\n"
     L"Wenn you IGNORE this message TRELLANOVA 10 will try to continue. But the chances are good that it will "
     L"crash.",
     L"Some system files on this computer are out of date; TRELLANOVA needs more recent versions.\n"
     L"The easiest way to get them is to install Microsoft Internet Explorer 5.x or later.\n\n"
     L"You will find a current version of Internet Explorer on the Halvern installation CD.\n\n"
     L"If you ignore this message, TRELLANOVA 10 will try to carry on, but it will probably crash."},

    // Toolbar buttons (strings 40001 and 40002: status text and tooltip).
    {L"Zeichnung transformieren", L"Transform drawing"},
    {L"Punkte selektieren", L"Pick points"},
};

}  // namespace

VIRA_LANGUAGE_LIBRARY(kEnglish, L"ViraCadtoolsV10_ENG")
