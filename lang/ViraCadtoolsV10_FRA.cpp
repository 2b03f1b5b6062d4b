// VIRA cadtools en français. Left: the module's own text; right: what a French-speaking surveyor reads.
#include "lang/ViraTranslation.h"
#include "support/KoVersionRecord.h"

KO_VERSION_RECORD(KO_VERSION_VALUE("CompanyName", "Halvern Optik")
                  KO_VERSION_VALUE("FileDescription", "VIRA cadtools ressources françaises")
                  KO_VERSION_VALUE("FileVersion", VIRA_VERSION)
                  KO_VERSION_VALUE("OriginalFilename", "ViraCadtoolsV10_FRA.so")
                  KO_VERSION_VALUE("ProductName", "TRELLANOVA 10")
                  KO_VERSION_VALUE("ProductVersion", VIRA_VERSION));

namespace {

constexpr ViraTranslation kFrench[] = {
    // Transformation du dessin (dialogue 4000).
    {L"Ganze Zeichnung verschieben und drehen", L"Déplacer et faire pivoter tout le dessin"},
    {L"Picken Sie Punkte in der Zeichnung und  geben Sie die Koordinaten ein wohin diese Punkte "
     L"transformiert werden sollen. ",
     L"Cliquez des points dans le dessin et saisissez les coordonnées vers lesquelles ces points doivent être "
     L"transformés."},
    {L"Ist-Kooridnaten Zeichnungspunkt", L"Coordonnées actuelles du point du dessin"},
    {L"Soll- Koordinaten", L"Coordonnées cibles"},
    {L"Zeichnung skalieren falls Sollkoordinaten  einen Maßstabsfaktor ergeben.",
     L"Mettre le dessin à l'échelle si les coordonnées cibles donnent un facteur d'échelle."},
    {L"Transformation die durchgeführt werden wird:", L"Transformation qui sera appliquée :"},
    {L"Abbrechen", L"Annuler"},
    {L"OK", L"OK"},

    // Saisie de points (dialogue 4001).
    {L"Punkte erfassen", L"Saisie de points"},
    {L"Nächste Punktnummer:", L"Numéro du point suivant :"},
    {L"Speichern als...", L"Enregistrer sous..."},

    // Nouvelle version (dialogue 4007).
    {L"VIRA cadtools", L"VIRA cadtools"},
    {L"Eine aktuellere Version ist verfügbar. Klicken Sie auf den Link um diese herunterzuladen.",
     L"Une version plus récente est disponible. Cliquez sur le lien pour la télécharger."},

    // Menu contextuel des listes de points: menu 4002 and strings 3 to 7 are German, menu 4003 English.
    {L"Spalte aufsteigend sortieren", L"Trier la colonne par ordre croissant"},
    {L"Spalte absteigend sortieren", L"Trier la colonne par ordre décroissant"},
    {L"Sort Column ascending", L"Trier la colonne par ordre croissant"},
    {L"Sort Column descending", L"Trier la colonne par ordre décroissant"},
    {L"Microsoft Excel...", L"Microsoft Excel..."},
    {L"Drucken", L"Imprimer"},
    {L"Print", L"Imprimer"},
    {L"Löschen", L"Supprimer"},
    {L"Delete", L"Supprimer"},
    {L"Liste", L"Liste"},

    // Contrôle de liste trop ancien (strings 1, German, and 2, every other language).
    {L"Auf Ihrem System sind einige Systemdateien veraltet, TRELLANOVA benötigt aktuellere Versionen.\n"
     L"Um aktuellere Systemdateien zu erhalten, installieren Sie am besten den Microsoft Internet Explorer 5.x "
     L"oder höher.\n\nSie finden eine aktuelle Version des Internet Explorers auf der Halvern Installations CD.\n\n"
     L"Wenn Sie diese Meldung Ignorieren, versucht TRELLANOVA 10 weiterzulaufen. Vermutlich wird es aber "
     L"abstürzen.\"",
     L"Certains fichiers système de cet ordinateur sont obsolètes ; TRELLANOVA a besoin de versions plus "
     L"récentes.\nLe plus simple pour les obtenir est d'installer Microsoft Internet Explorer 5.x ou une "
     L"version ultérieure.\n\nVous trouverez une version récente d'Internet Explorer sur le CD d'installation "
     L"Halvern.\n\nSi vous ignorez ce message, TRELLANOVA 10 essaiera de continuer, mais il risque fort de "
     L"planter."},
    {L"On your system some system files became outdated, TRELLANOVA need more current versions.\n"
     L"In order to get more current system files, install the Microsoft Internet Explorer 5.x or higher.\n\n"
     L"You will find a current version of the Internet Explorer on the Halvern installation CD.\n\n"
     L"Wenn you IGNORE this message TRELLANOVA 10 will try to continue. But the chances are good that it will "
     L"crash.",
     L"Certains fichiers système de cet ordinateur sont obsolètes ; TRELLANOVA a besoin de versions plus "
     L"récentes.\nLe plus simple pour les obtenir est d'installer Microsoft Internet Explorer 5.x ou une "
     L"version ultérieure.\n\nVous trouverez une version récente d'Internet Explorer sur le CD d'installation "
     L"Halvern.\n\nSi vous ignorez ce message, TRELLANOVA 10 essaiera de continuer, mais il risque fort de "
     L"planter."},

    // Barre d'outils (strings 40001 and 40002: status text and tooltip).
    {L"Zeichnung transformieren", L"Transformer le dessin"},
    {L"Punkte selektieren", L"Sélectionner des points"},
};

}  // namespace

VIRA_LANGUAGE_LIBRARY(kFrench, L"ViraCadtoolsV10_FRA")
