#include "i18n/CatalogueTable.h"

// The catalogue: every text a person sees, one row per German id, in UTF-8, with the columns
//
//     {German id, German, English, Spanish, French},
//
// so a translator reads the four languages of a text together. Code and window marks name a
// text by the German id only; the other languages sit at fixed offsets from it (Catalogue.h).
//
// Rules for editing:
// - keep "%s" and "%d" as they are: the program fills them (a file name, a key number);
// - keep the product names "Kelvora" and "Kelvora-Crypt" untranslated;
// - in a file-dialog filter such as "All files (*.*)|*.*" only the part before "|" is text;
// - the English column is the reference wording and stays exactly as it is, slips such as
//   "ecnrypt" included;
// - kAbsent marks a text one language does not have: there is no German or French 182. The
//   welcome window's 201 to 203 come with that window (French has no 202 and 203);
// - texts the product adds beyond the reference list take German ids from 500 up.

namespace kelvora {

namespace {

constexpr const char* kAbsent = nullptr;

// clang-format off
constexpr CatalogueRow kRows[] = {
    {103, "Fehler:",
          "Error:",
          "Error:",
          "Erreur :"},

    {105, "Öffnen",
          "Open",
          "Abrir",
          "Ouvrir"},

    {106, "Es wurde ein zufälliges Passwort mit höchster Sicherheit erzeugt. Bitte merken Sie "
          "sich dieses Passwort, damit Sie die Datei später wieder öffnen können.",
          "A random password with maximum security was created. Please memorize this password in "
          "order to be able to open the file later again.",
          "Se ha creado una contraseña aleatoria con la máxima seguridad. Memorice esta "
          "contraseña para poder volver a abrir el archivo más adelante.",
          "Un mot de passe aléatoire offrant une sécurité maximale a été créé. Mémorisez-le bien "
          "afin de pouvoir rouvrir le fichier plus tard."},

    {108, "Die Datei hat keinen verwertbaren Inhalt!",
          "File has no usable content!",
          "¡El archivo no tiene contenido utilizable!",
          "Le fichier n'a aucun contenu exploitable !"},

    {109, "Alle Dateien (*.*)|*.*",
          "All files (*.*)|*.*",
          "Todos los archivos (*.*)|*.*",
          "Tous les fichiers (*.*)|*.*"},

    {110, "Dateiinhalt speichern",
          "Save file content",
          "Guardar el contenido del archivo",
          "Enregistrer le contenu du fichier"},

    {111, "Speichern",
          "Save",
          "Guardar",
          "Enregistrer"},

    {112, "Die Datei kann nicht gespeichert werden",
          "Cannot save the file",
          "No se puede guardar el archivo",
          "Impossible d'enregistrer le fichier"},

    {114, "Fehler: Bitte prüfen Sie Dateiname(n) und Passwort",
          "Error: Please check the filename(s) and password",
          "Error: compruebe los nombres de archivo y la contraseña",
          "Erreur : veuillez vérifier le(s) nom(s) de fichier et le mot de passe"},

    {115, "Fehler!",
          "Error!",
          "¡Error!",
          "Erreur !"},

    {116, "Die verschlüsselte Datei wurde als „%s“ gespeichert.",
          "The encrypted file has been saved as \"%s\".",
          "El archivo cifrado se ha guardado como «%s».",
          "Le fichier chiffré a été enregistré sous « %s »."},

    {120, "Datei entschlüsselt!",
          "File decrypted!",
          "¡Archivo descifrado!",
          "Fichier déchiffré !"},

    {121, "Zu verschlüsselnde Datei auswählen",
          "Select file to encrypt",
          "Seleccione el archivo que desea cifrar",
          "Sélectionner le fichier à chiffrer"},

    {122, "Zu entschlüsselnde Datei auswählen",
          "Select file to decrypt",
          "Seleccione el archivo que desea descifrar",
          "Sélectionner le fichier à déchiffrer"},

    {123, "Verschlüsselte Dateien (*.vexo)|*.vexo",
          "Encrypted files (*.vexo)|*.vexo",
          "Archivos cifrados (*.vexo)|*.vexo",
          "Fichiers chiffrés (*.vexo)|*.vexo"},

    {124, "Diese Passphrase ist nicht sicher.",
          "This passphrase is not secure.",
          "Esta frase de contraseña no es segura.",
          "Cette phrase secrète n'est pas sûre."},

    {125, "Diese Passphrase kann vermutlich geknackt werden.",
          "This passphrase can presumably be cracked.",
          "Esta frase de contraseña probablemente se puede romper.",
          "Cette phrase secrète peut probablement être cassée."},

    {126, "Diese Passphrase ist sicher genug, um dem Angriff eines einzelnen Computers "
          "standzuhalten.",
          "This passphrase is secure enough to withstand an attack by one computer.",
          "Esta frase de contraseña es lo bastante segura para resistir el ataque de un "
          "ordenador.",
          "Cette phrase secrète est assez sûre pour résister à l'attaque d'un ordinateur."},

    {127, "Diese Passphrase ist sicher genug, um dem Angriff vieler vernetzter Computer "
          "standzuhalten.",
          "This passphrase is secure enough to withstand an attack by a larger number of network "
          "computers.",
          "Esta frase de contraseña es lo bastante segura para resistir el ataque de un gran "
          "número de ordenadores en red.",
          "Cette phrase secrète est assez sûre pour résister à l'attaque d'un grand nombre "
          "d'ordinateurs en réseau."},

    {128, "Diese Passphrase bietet ein Höchstmaß an Sicherheit.",
          "This passphrase provides maximum of security.",
          "Esta frase de contraseña ofrece la máxima seguridad.",
          "Cette phrase secrète offre une sécurité maximale."},

    {129, "Leertaste",
          "Space",
          "Espacio",
          "Espace"},

    {130, "Tab",
          "Tab",
          "Tab",
          "Tab"},

    {142, "In Arbeit",
          "Working",
          "Procesando",
          "Traitement en cours"},

    {143, "Bitte warten Sie, bis die Berechnungen abgeschlossen sind...",
          "Please wait for the calculations to be completed...",
          "Espere a que finalicen los cálculos...",
          "Veuillez patienter jusqu'à la fin des calculs..."},

    {144, "Mit Kelvora-Crypt lassen sich Dateien sicher verschlüsseln. Bitte wählen Sie die "
          "Dateien aus, die Sie verschlüsseln möchten.",
          "Files can be securely encrypted with Kelvora-Crypt. Please select the files you want "
          "to ecnrypt.",
          "Con Kelvora-Crypt puede cifrar archivos de forma segura. Seleccione los archivos que "
          "desea cifrar.",
          "Kelvora-Crypt permet de chiffrer des fichiers en toute sécurité. Sélectionnez les "
          "fichiers que vous souhaitez chiffrer."},

    {145, "Eingabedateien",
          "Input Files",
          "Archivos de entrada",
          "Fichiers d'entrée"},

    {146, "Ausgabedatei",
          "Output File",
          "Archivo de salida",
          "Fichier de sortie"},

    {148, "Zu entschlüsselnde Datei:",
          "Decrypt file:",
          "Archivo para descifrar:",
          "Fichier à déchiffrer :"},

    {149, "Bitte geben Sie ein oder mehrere Wörter als Passphrase für die Verschlüsselung ein "
          "(256 Bit). Groß- und Kleinschreibung wird unterschieden!",
          "Please enter one or more words as the encryption passphrase (256 Bit). Entries are "
          "case sensitive!",
          "Introduzca una o varias palabras como frase de contraseña para el cifrado (256 bits). "
          "¡Se distingue entre mayúsculas y minúsculas!",
          "Saisissez un ou plusieurs mots comme phrase secrète de chiffrement (256 bits). "
          "Attention aux majuscules et aux minuscules !"},

    {150, "Abbrechen",
          "Cancel",
          "Cancelar",
          "Annuler"},

    {151, "OK",
          "OK",
          "Aceptar",
          "OK"},

    {152, "Starten",
          "Start",
          "Iniciar",
          "Démarrer"},

    {153, "Ausgabeverzeichnis:",
          "Output directory:",
          "Carpeta de salida:",
          "Dossier de destination :"},

    {154, "Verschlüsselte Datei:",
          "Encrypted File:",
          "Archivo cifrado:",
          "Fichier chiffré :"},

    {155, "Zufällig erzeugen",
          "Create random",
          "Generar al azar",
          "Générer aléatoirement"},

    {156, "Über die Bildschirmtastatur eingeben",
          "Enter via Screen-Keyboard",
          "Introducir con el teclado en pantalla",
          "Saisir avec le clavier virtuel"},

    {158, "Passphrase verbergen",
          "Hide passphrase",
          "Ocultar la frase de contraseña",
          "Masquer la phrase secrète"},

    {159, "Qualität der Passphrase:",
          "Passphrase quality:",
          "Calidad de la frase de contraseña:",
          "Qualité de la phrase secrète :"},

    {160, "Zur Online-Version wechseln",
          "Switch to online version",
          "Cambiar a la versión en línea",
          "Passer à la version en ligne"},

    {161, "Text verschlüsseln",
          "Encrypt text",
          "Cifrar texto",
          "Chiffrer le texte"},

    {162, "Text entschlüsseln",
          "Decrypt text",
          "Descifrar texto",
          "Déchiffrer le texte"},

    {163, "Dateien verschlüsseln",
          "Encrypt files",
          "Cifrar archivos",
          "Chiffrer des fichiers"},

    {164, "Dateien entschlüsseln",
          "Decrypt files",
          "Descifrar archivos",
          "Déchiffrer des fichiers"},

    {165, "Zu ver- oder entschlüsselnder Text:",
          "Text to encrypt or decrypt:",
          "Texto para cifrar o descifrar:",
          "Texte à chiffrer ou à déchiffrer :"},

    {166, "Text ver-/entschlüsseln",
          "Encrypt/Decrypt Text",
          "Cifrar/descifrar texto",
          "Chiffrer/déchiffrer du texte"},

    {167, "Dateien ver-/entschlüsseln",
          "Encrypt/Decrypt Files",
          "Cifrar/descifrar archivos",
          "Chiffrer/déchiffrer des fichiers"},

    {169, "Bildschirmtastatur",
          "Screen Keyboard",
          "Teclado en pantalla",
          "Clavier virtuel"},

    {178, "Die Ausgabedatei %s existiert bereits. Möchten Sie sie überschreiben? Wenn Sie „Nein“ "
          "wählen, werden Sie aufgefordert, einen anderen Dateinamen einzugeben.",
          "The output file %s already exists. Do you want to overwrite it? If you press \"No\", "
          "you will be prompted to enter another filename.",
          "El archivo de salida %s ya existe. ¿Desea sobrescribirlo? Si pulsa «No», se le pedirá "
          "que introduzca otro nombre de archivo.",
          "Le fichier de sortie %s existe déjà. Voulez-vous le remplacer ? Si vous cliquez sur "
          "« Non », vous serez invité à saisir un autre nom de fichier."},

    {179, "Hinzufügen",
          "Add",
          "Añadir",
          "Ajouter"},

    {180, "Entfernen",
          "Remove",
          "Quitar",
          "Retirer"},

    {181, "Per E-Mail senden",
          "Send by mail",
          "Enviar por correo electrónico",
          "Envoyer par e-mail"},

    {182, kAbsent,
          "Return to main menu",
          "Volver al menú principal",
          kAbsent},

    {183, "Verschlüsseln",
          "Encrypt",
          "Cifrar",
          "Chiffrer"},

    {184, "Entschlüsseln",
          "Decrypt",
          "Descifrar",
          "Déchiffrer"},

    {187, "oder",
          "or",
          "o",
          "ou"},

    {190, "Merken Sie sich unbedingt das Passwort, mit dem Sie die Datei verschlüsseln. Wenn Sie "
          "es vergessen, können Sie die Datei nicht mehr entschlüsseln!",
          "Be sure to memorize the password used to encrypt the file. If you forget it, you "
          "cannot decrypt the file!",
          "Asegúrese de memorizar la contraseña con la que cifra el archivo. ¡Si la olvida, no "
          "podrá descifrar el archivo!",
          "Mémorisez bien le mot de passe utilisé pour chiffrer le fichier. Si vous l'oubliez, "
          "vous ne pourrez plus le déchiffrer !"},

    {191, "Bitte bestätigen Sie in Ihrem Browser das spezielle Zertifikat des Sicherheitsservers.",
          "Please authorize the special security server certificate in your browser.",
          "Autorice en su navegador el certificado especial del servidor de seguridad.",
          "Veuillez autoriser dans votre navigateur le certificat spécial du serveur de "
          "sécurité."},

    {192, "Dateien",
          "Files",
          "Archivos",
          "Fichiers"},

    {193, "Verzeichnisstruktur",
          "Directory structure",
          "Estructura de carpetas",
          "Arborescence de dossiers"},

    {194, "Fehler: Entweder liegt ein Gerätefehler vor, oder das eingegebene Passwort war "
          "ungültig.",
          "Error: There is either a device error or the password you have entered was invalid.",
          "Error: se ha producido un error de dispositivo o la contraseña introducida no es "
          "válida.",
          "Erreur : une erreur de périphérique s'est produite ou le mot de passe saisi n'est pas "
          "valide."},

    {195, "Die Datei „zlib.dll“ wurde im Programmverzeichnis nicht gefunden. Bitte kopieren Sie "
          "diese Datei dorthin, um Dateien und Verzeichnisse ver- und entschlüsseln zu können. "
          "Texte lassen sich auch ohne sie ver- und entschlüsseln.",
          "The file \"zlib.dll\" could not be found in the program directory. Please copy this "
          "file in order to be able to encrypt or decrypt files and directories. Encrypting and "
          "decrypting texts is possible without it.",
          "No se ha encontrado el archivo «zlib.dll» en la carpeta del programa. Copie este "
          "archivo en ella para poder cifrar y descifrar archivos y carpetas. Los textos se "
          "pueden cifrar y descifrar sin él.",
          "Le fichier « zlib.dll » est introuvable dans le dossier du programme. Copiez-y ce "
          "fichier pour pouvoir chiffrer et déchiffrer des fichiers et des dossiers. Le "
          "chiffrement et le déchiffrement de textes restent possibles sans lui."},

    {200, "Willkommen...",
          "Welcome...",
          "Bienvenido...",
          "Bienvenue..."},

    // The shared-security key count is out of range; a key to combine is empty.
    {385, "Die Anzahl der Schlüssel muss zwischen 1 und 10 liegen.",
          "The number of keys must be between 1 and 10.",
          "El número de claves debe estar entre 1 y 10.",
          "Le nombre de clés doit être compris entre 1 et 10."},

    {386, "Schlüssel %s ist leer. Bitte geben Sie vor dem Entschlüsseln alle Schlüssel ein.",
          "Key %s is empty. Please enter every key before decrypting.",
          "La clave %s está vacía. Introduzca todas las claves antes de descifrar.",
          "La clé %s est vide. Saisissez toutes les clés avant de déchiffrer."},

    {390, "Einzelne Passphrase",
          "Single Passphrase",
          "Frase de contraseña única",
          "Phrase secrète unique"},

    {391, "Geteilte Sicherheit",
          "Shared Security",
          "Seguridad compartida",
          "Sécurité partagée"},

    {392, "Schlüssel",
          "Keys",
          "Claves",
          "Clés"},

    {393, "Eine oder mehrere Dateien sind im verschlüsselten Ziel bereits vorhanden und werden "
          "nicht erneut hinzugefügt.",
          "One or more files already exist in the encrypted destination and will not be added "
          "again.",
          "Uno o varios archivos ya existen en el destino cifrado y no se volverán a añadir.",
          "Un ou plusieurs fichiers existent déjà dans la destination chiffrée et ne seront pas "
          "ajoutés à nouveau."},

    {394, "Per E-Mail versenden",
          "Send via Email",
          "Enviar por correo electrónico",
          "Envoyer par e-mail"},

    {395, "Ihr Name:",
          "Your name:",
          "Su nombre:",
          "Votre nom :"},

    {396, "Ihre E-Mail-Adresse:",
          "Your email address:",
          "Su dirección de correo electrónico:",
          "Votre adresse e-mail :"},

    {397, "E-Mail-Adresse des Empfängers:",
          "Recipient's email address:",
          "Dirección de correo electrónico del destinatario:",
          "Adresse e-mail du destinataire :"},

    {398, "Optionale Nachricht an den Empfänger (unverschlüsselt):",
          "Optional message to the recipient (not encrypted):",
          "Mensaje opcional para el destinatario (sin cifrar):",
          "Message facultatif pour le destinataire (non chiffré) :"},

    {399, "Die Passphrase hier NICHT angeben!",
          "Do NOT include the passphrase!",
          "¡NO incluya la frase de contraseña!",
          "N'incluez PAS la phrase secrète !"},

    {400, "Senden",
          "Send",
          "Enviar",
          "Envoyer"},

    {401, "Die Nachricht wurde erfolgreich gesendet!",
          "The message has been successfully sent!",
          "¡El mensaje se ha enviado correctamente!",
          "Le message a bien été envoyé !"},

    {402, "Fehler beim Senden der Nachricht",
          "Error sending the message",
          "Error al enviar el mensaje",
          "Erreur lors de l'envoi du message"},

    {403, "Eine Internetverbindung ist erforderlich.",
          "Internet connection needed.",
          "Se necesita una conexión a Internet.",
          "Une connexion Internet est nécessaire."},

    {404, "Ungültige E-Mail-Adresse!",
          "Invalid Email address!",
          "¡Dirección de correo electrónico no válida!",
          "Adresse e-mail non valide !"},

    // The tooltip of the minimise/close picture; the names of the languages on their flags,
    // each written in its own language.
    {500, "Links minimieren, rechts schließen",
          "Left: minimize, right: close",
          "Izquierda: minimizar; derecha: cerrar",
          "À gauche : réduire ; à droite : fermer"},

    {501, "Deutsch",
          "Deutsch",
          "Deutsch",
          "Deutsch"},

    {502, "English",
          "English",
          "English",
          "English"},

    {503, "Español",
          "Español",
          "Español",
          "Español"},

    {504, "Français",
          "Français",
          "Français",
          "Français"},

    // The usage text of the desktop program's "/?" switch; "%s" is the program's name.
    {505, "Parameter für Kelvora:\r\n"
          "%s [/setEncrFiles <Liste von Dateien> /outputfile <Datei>]|[/setDecrFile <Datei>]",
          "Parameters for Kelvora:\r\n"
          "%s [/setEncrFiles <list of files> /outputfile <file>]|[/setDecrFile <file>]",
          "Parámetros de Kelvora:\r\n"
          "%s [/setEncrFiles <lista de archivos> /outputfile <archivo>]|[/setDecrFile <archivo>]",
          "Paramètres de Kelvora :\r\n"
          "%s [/setEncrFiles <liste de fichiers> /outputfile <fichier>]|[/setDecrFile <fichier>]"},

    // Several encrypted texts in the text box (a pasted mail thread); "%s" is their number.
    {630, "Der Text enthält %s verschlüsselte Texte. Entschlüsselt wird der, in dem die "
          "Schreibmarke steht, sonst der erste.",
          "The text holds %s encrypted texts. The one the cursor stands in is decrypted, "
          "otherwise the first one.",
          "El texto contiene %s textos cifrados. Se descifra aquel en el que está el cursor o, "
          "si no, el primero.",
          "Le texte contient %s textes chiffrés. Celui où se trouve le curseur est déchiffré, "
          "sinon le premier."},
};
// clang-format on

} // namespace

std::span<const CatalogueRow> CatalogueRows() {
    return kRows;
}

} // namespace kelvora
