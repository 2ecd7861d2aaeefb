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
// - kAbsent marks a text one language does not have: there is no German or French 182, and
//   no French 202 and 203 (the welcome window leaves those lines out in French);
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

    // The welcome window's promotional sentences: a question naming one of the maker's
    // products, and two one-line descriptions of its tools. French has no 202 and 203.
    {201, "Kennen Sie schon %s?",
          "Do you already know %s?",
          "¿Ya conoce %s?",
          "Connaissez-vous déjà %s ?"},

    {202, "Entfernt Tracking-Cookies aus allen Ihren Browsern mit einem Klick.",
          "Removes tracking cookies from all your browsers with one click.",
          "Elimina las cookies de seguimiento de todos sus navegadores con un clic.",
          kAbsent},

    {203, "Vernichtet gelöschte Dateien so, dass kein Werkzeug sie zurückholen kann.",
          "Shreds deleted files so that no tool can bring them back.",
          "Destruye los archivos borrados para que ninguna herramienta pueda recuperarlos.",
          kAbsent},

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

    // Why a file job failed, shown after "Error:" (103); "%s" names the file.
    {510, "Der Name von „%s“ ist zu lang, um gespeichert zu werden (mehr als 255 Byte).",
          "The name of \"%s\" is too long to be stored (more than 255 bytes).",
          "El nombre de «%s» es demasiado largo para guardarlo (más de 255 bytes).",
          "Le nom de « %s » est trop long pour être enregistré (plus de 255 octets)."},

    {511, "Der Name „%s“ würde aus dem Ausgabeverzeichnis hinausführen; diese Datei wird "
          "nicht verarbeitet.",
          "The name \"%s\" would lead outside the output directory; this file is not processed.",
          "El nombre «%s» llevaría fuera del directorio de salida; este archivo no se procesa.",
          "Le nom « %s » mènerait hors du répertoire de sortie ; ce fichier n'est pas traité."},

    {512, "„%s“ kann nicht gelesen werden.",
          "\"%s\" cannot be read.",
          "No se puede leer «%s».",
          "Impossible de lire « %s »."},

    {513, "„%s“ kann nicht geschrieben werden.",
          "\"%s\" cannot be written.",
          "No se puede escribir «%s».",
          "Impossible d'écrire « %s »."},

    {514, "Die Daten von „%s“ sind beschädigt.",
          "The data of \"%s\" are damaged.",
          "Los datos de «%s» están dañados.",
          "Les données de « %s » sont endommagées."},

    {515, "„%s“ kann nicht komprimiert werden.",
          "\"%s\" cannot be compressed.",
          "No se puede comprimir «%s».",
          "Impossible de compresser « %s »."},

    {516, "Die Ausgabedatei „%s“ ist selbst eine der Eingabedateien.",
          "The output file \"%s\" is itself one of the input files.",
          "El archivo de salida «%s» es a su vez uno de los archivos de entrada.",
          "Le fichier de sortie « %s » fait lui-même partie des fichiers d'entrée."},

    // The working panel during a file job: the current file, then the speed and the time left.
    {517, "Datei: %s",
          "File: %s",
          "Archivo: %s",
          "Fichier : %s"},

    {518, "%s pro Sekunde, noch etwa %d s",
          "%s per second, about %d s left",
          "%s por segundo, quedan unos %d s",
          "%s par seconde, encore environ %d s"},

    // The input list's count and total size; the line after a decryption ("%s" a link to the
    // folder) and the files it did not restore.
    {519, "%d Einträge, %s",
          "%d entries, %s",
          "%d entradas, %s",
          "%d entrées, %s"},

    {520, "%d Datei(en) wiederhergestellt in %s",
          "%d file(s) restored in %s",
          "%d archivo(s) restaurado(s) en %s",
          "%d fichier(s) restauré(s) dans %s"},

    {521, "Nicht wiederhergestellt: %s",
          "Not restored: %s",
          "No restaurado: %s",
          "Non restauré : %s"},

    // Browse buttons and the titles of the folder choosers.
    {522, "Durchsuchen …",
          "Browse…",
          "Examinar…",
          "Parcourir…"},

    {523, "Seiten",
          "Pages",
          "Páginas",
          "Pages"},

    {524, "Minimieren",
          "Minimize",
          "Minimizar",
          "Réduire"},

    {525, "Schließen",
          "Close",
          "Cerrar",
          "Fermer"},

    {526, "Zu verschlüsselndes Verzeichnis auswählen",
          "Select a directory to encrypt",
          "Seleccione un directorio para cifrar",
          "Sélectionnez un répertoire à chiffrer"},

    {527, "Ausgabeverzeichnis auswählen",
          "Select the output directory",
          "Seleccione el directorio de salida",
          "Sélectionnez le répertoire de sortie"},

    // The screen keyboard: names of the keys that show no character, and of the size switch.
    {550, "Letztes Zeichen löschen",
          "Delete the last character",
          "Borrar el último carácter",
          "Effacer le dernier caractère"},

    {551, "Großbuchstaben",
          "Capital letters",
          "Mayúsculas",
          "Majuscules"},

    {552, "Normale Größe",
          "Normal size",
          "Tamaño normal",
          "Taille normale"},

    {553, "Doppelte Größe",
          "Double size",
          "Tamaño doble",
          "Taille double"},

    // The main window's button that opens the welcome and about window.
    {554, "Über Kelvora",
          "About Kelvora",
          "Acerca de Kelvora",
          "À propos de Kelvora"},

    // The mail window: a field too long to send, its busy state, the encrypted text's label,
    // characters the server cannot take.
    {555, "Der Text ist zu lang, um per E-Mail gesendet zu werden: Ein Feld darf höchstens "
          "32.767 Zeichen enthalten.",
          "The text is too long to be sent by mail: a field may hold at most 32,767 characters.",
          "El texto es demasiado largo para enviarlo por correo: un campo admite como máximo "
          "32.767 caracteres.",
          "Le texte est trop long pour être envoyé par e-mail : un champ peut contenir au plus "
          "32 767 caractères."},

    {556, "Wird gesendet...",
          "Sending...",
          "Enviando...",
          "Envoi en cours..."},

    {557, "Verschlüsselter Text:",
          "Encrypted text:",
          "Texto cifrado:",
          "Texte chiffré :"},

    {558, "Dieses Zeichen kann nicht per E-Mail gesendet werden, weil der Server nur "
          "westeuropäische Zeichen annimmt. Bitte entfernen Sie es: %s",
          "This character cannot be sent by mail, because the server takes Western European "
          "characters only. Please remove it: %s",
          "Este carácter no se puede enviar por correo, porque el servidor solo admite "
          "caracteres de Europa occidental. Elimínelo: %s",
          "Ce caractère ne peut pas être envoyé par e-mail, car le serveur n'accepte que "
          "les caractères d'Europe occidentale. Veuillez le supprimer : %s"},

    // The welcome window: what the program does, its version ("%s" is "1.0"), and the three
    // panels, each a heading, a paragraph, a call to action and its link.
    {560, "Kelvora verschlüsselt Texte, Dateien und ganze Ordner mit einer Passphrase, mit "
          "Rijndael und 256-Bit-Schlüsseln. Es braucht keine Installation und speichert keine "
          "Einstellungen: Starten Sie es vom USB-Stick, verschlüsseln Sie, und senden Sie das "
          "Ergebnis per E-Mail oder legen Sie es in Ihrer Online-Sicherung ab.",
          "Kelvora encrypts texts, files and whole folders with a passphrase, using Rijndael "
          "with 256-bit keys. It needs no installation and keeps no settings: start it from a "
          "USB stick, encrypt, and send the result by mail or keep it in your online backup.",
          "Kelvora cifra textos, archivos y carpetas enteras con una frase de contraseña, "
          "mediante Rijndael con claves de 256 bits. No necesita instalación ni guarda ajustes: "
          "arránquelo desde una memoria USB, cifre y envíe el resultado por correo o guárdelo en "
          "su copia de seguridad en línea.",
          "Kelvora chiffre des textes, des fichiers et des dossiers entiers avec une phrase "
          "secrète, grâce à Rijndael et des clés de 256 bits. Il ne demande aucune installation "
          "et ne garde aucun réglage : lancez-le depuis une clé USB, chiffrez, puis envoyez le "
          "résultat par e-mail ou gardez-le dans votre sauvegarde en ligne."},

    {561, "Version %s",
          "Version %s",
          "Versión %s",
          "Version %s"},

    {562, "Wie privat ist Ihr Browser?",
          "How private is your browser?",
          "¿Qué tan privado es su navegador?",
          "Votre navigateur est-il discret ?"},

    {563, "Jede Website, die Sie besuchen, erfährt mehr über Sie, als Sie vielleicht denken: "
          "Ihre Adresse, Ihr System, Ihre Schriften, Ihre Gewohnheiten. Unser kostenloser "
          "Datenschutztest zeigt Ihnen, was Ihr Browser verrät.",
          "Every web site you visit learns more about you than you may think: your address, "
          "your system, your fonts, your habits. Our free privacy test shows you what your "
          "browser gives away.",
          "Cada sitio web que visita sabe de usted más de lo que cree: su dirección, su sistema, "
          "sus fuentes, sus costumbres. Nuestra prueba de privacidad gratuita le muestra lo que "
          "revela su navegador.",
          "Chaque site que vous visitez en apprend plus sur vous que vous ne le pensez : votre "
          "adresse, votre système, vos polices, vos habitudes. Notre test de confidentialité "
          "gratuit vous montre ce que votre navigateur dévoile."},

    {564, "Machen Sie jetzt den Test, er dauert eine Minute:",
          "Take the test now, it takes one minute:",
          "Haga la prueba ahora, solo tarda un minuto:",
          "Faites le test maintenant, il prend une minute :"},

    {565, "Datenschutztest starten",
          "Start the privacy test",
          "Iniciar la prueba de privacidad",
          "Lancer le test de confidentialité"},

    {566, "Die Werkzeugsammlung der Macher dieses Programms hält Ihren Computer sauber und "
          "Ihre Privatsphäre privat.",
          "The toolbox from the makers of this program keeps your computer clean and your "
          "privacy yours.",
          "La caja de herramientas de los creadores de este programa mantiene su ordenador "
          "limpio y su privacidad a salvo.",
          "La boîte à outils des créateurs de ce programme garde votre ordinateur propre et "
          "votre vie privée à l'abri."},

    {567, "Testen Sie sie 30 Tage kostenlos:",
          "Try it free for 30 days:",
          "Pruébela gratis durante 30 días:",
          "Essayez-la gratuitement pendant 30 jours :"},

    {568, "Werkzeugsammlung herunterladen",
          "Download the toolbox",
          "Descargar la caja de herramientas",
          "Télécharger la boîte à outils"},

    {569, "Alle unsere Produkte",
          "All our products",
          "Todos nuestros productos",
          "Tous nos produits"},

    {570, "Surfen, ohne Spuren zu hinterlassen",
          "Surf without leaving traces",
          "Navegue sin dejar rastro",
          "Naviguez sans laisser de traces"},

    {571, "Der Anonymisierungsdienst unseres Partners verbirgt Ihre Adresse vor jeder besuchten "
          "Website und verschlüsselt Ihre Verbindung in öffentlichen Netzen.",
          "Our partner's anonymising service hides your address from every site you visit and "
          "encrypts your connection in public networks.",
          "El servicio de anonimato de nuestro socio oculta su dirección a cada sitio que visita "
          "y cifra su conexión en redes públicas.",
          "Le service d'anonymisation de notre partenaire cache votre adresse à chaque site "
          "visité et chiffre votre connexion sur les réseaux publics."},

    {572, "Nutzer dieses Programms testen ihn einen Monat kostenlos:",
          "Users of this program try it free for a month:",
          "Los usuarios de este programa lo prueban gratis durante un mes:",
          "Les utilisateurs de ce programme l'essaient gratuitement pendant un mois :"},

    {573, "Kostenlosen Test starten",
          "Start the free trial",
          "Empezar la prueba gratuita",
          "Commencer l'essai gratuit"},

    // The buttons of questions, beside 150 "Cancel" and 151 "OK".
    {580, "Ja",
          "Yes",
          "Sí",
          "Oui"},

    {581, "Nein",
          "No",
          "No",
          "Non"},

    // The arrows of the shared-security panel.
    {582, "Zum nächsten Schlüssel",
          "Go to next key",
          "Ir a la clave siguiente",
          "Aller à la clé suivante"},

    {583, "Zum vorherigen Schlüssel",
          "Go to previous key",
          "Ir a la clave anterior",
          "Aller à la clé précédente"},

    {584, "Die geteilten Schlüssel dienen dem Entschlüsseln. Verschlüsselt wird immer mit der "
          "Passphrase allein.",
          "The shared keys serve decryption. Encryption always uses the passphrase alone.",
          "Las claves compartidas sirven para descifrar. El cifrado usa siempre solo la frase "
          "de contraseña.",
          "Les clés partagées servent au déchiffrement. Le chiffrement utilise toujours la "
          "phrase secrète seule."},

    // The ten key places: "%s" is the key's number.
    {585, "Schlüssel %s: eingegeben",
          "Key %s: entered",
          "Clave %s: introducida",
          "Clé %s : saisie"},

    {586, "Schlüssel %s: leer",
          "Key %s: empty",
          "Clave %s: vacía",
          "Clé %s : vide"},

    {587, "Angezeigter Schlüssel",
          "Key on show",
          "Clave mostrada",
          "Clé affichée"},

    // "%s" names a character of the passphrase that the key cannot hold.
    {588, "Die Passphrase enthält das Zeichen %s, das der Schlüssel nicht aufnehmen kann (es "
          "würde zu \"?\"). Bitte wählen Sie eine Passphrase ohne dieses Zeichen.",
          "The passphrase contains the character %s, which the key cannot hold (it would become "
          "\"?\"). Please choose a passphrase without it.",
          "La frase de contraseña contiene el carácter %s, que la clave no puede contener (se "
          "convertiría en \"?\"). Elija una frase de contraseña sin él.",
          "La phrase secrète contient le caractère %s, que la clé ne peut pas contenir (il "
          "deviendrait « ? »). Choisissez une phrase secrète sans ce caractère."},

    // Warning lines of the rating display.
    {589, "Das Zeichen %s zählt im Schlüssel als \"?\".",
          "The character %s counts as \"?\" in the key.",
          "El carácter %s cuenta como \"?\" en la clave.",
          "Le caractère %s compte comme « ? » dans la clé."},

    {590, "Nur die ersten 32 Zeichen werden verwendet.",
          "Only the first 32 characters are used.",
          "Solo se usan los primeros 32 caracteres.",
          "Seuls les 32 premiers caractères sont utilisés."},

    // "%s" names the first character of the text that an encrypted text cannot hold, "%d" is
    // its position in the text.
    {591, "Der Text enthält an Stelle %d das Zeichen %s, das ein verschlüsselter Text nicht "
          "aufnehmen kann. Soll der Text mit \"?\" anstelle jedes solchen Zeichens verschlüsselt "
          "werden?",
          "The text contains the character %s at position %d, which an encrypted text cannot "
          "hold. Encrypt the text with \"?\" in place of every such character?",
          "El texto contiene el carácter %s en la posición %d, que un texto cifrado no puede "
          "contener. ¿Cifrar el texto con \"?\" en lugar de cada uno de esos caracteres?",
          "Le texte contient le caractère %s à la position %d, qu'un texte chiffré ne peut pas "
          "contenir. Chiffrer le texte avec « ? » à la place de chacun de ces caractères ?"},

    {592, "Der entschlüsselte Text beginnt nicht mit der Kelvora-Zeile: Die Passphrase oder "
          "ein Schlüssel ist wahrscheinlich falsch. Soll das Ergebnis trotzdem angezeigt werden? "
          "Bei \"Nein\" bleibt der verschlüsselte Text stehen.",
          "The decrypted text does not begin with the Kelvora line: the passphrase or a key is "
          "probably wrong. Show the result anyway? If you answer \"No\", the encrypted text "
          "stays as it is.",
          "El texto descifrado no empieza con la línea de Kelvora: la frase de contraseña o una "
          "clave probablemente es incorrecta. ¿Mostrar el resultado de todos modos? Si responde "
          "\"No\", el texto cifrado se queda como está.",
          "Le texte déchiffré ne commence pas par la ligne Kelvora : la phrase secrète ou une "
          "clé est probablement fausse. Afficher quand même le résultat ? Si vous répondez "
          "« Non », le texte chiffré reste tel quel."},

    // The result of a file job that left entries out; the names follow, one per line.
    {610, "%d Einträge wurden ausgelassen, alles andere ist erledigt:",
          "%d entries were left out; everything else is done:",
          "Se omitieron %d entradas; todo lo demás está hecho:",
          "%d entrées ont été laissées de côté ; tout le reste est fait :"},

    // Conflicts found before a restore wrote anything; the paths follow, one per line.
    {611, "Diese Dateien gibt es schon. Es wurde nichts geschrieben:",
          "These files exist already. Nothing was written:",
          "Estos archivos ya existen. No se ha escrito nada:",
          "Ces fichiers existent déjà. Rien n'a été écrit :"},

    // Several encrypted texts in the text box (a pasted mail thread); "%s" is their number.
    {630, "Der Text enthält %s verschlüsselte Texte. Entschlüsselt wird der, in dem die "
          "Schreibmarke steht, sonst der erste.",
          "The text holds %s encrypted texts. The one the cursor stands in is decrypted, "
          "otherwise the first one.",
          "El texto contiene %s textos cifrados. Se descifra aquel en el que está el cursor o, "
          "si no, el primero.",
          "Le texte contient %s textes chiffrés. Celui où se trouve le curseur est déchiffré, "
          "sinon le premier."},

    // Why an entry was refused or left out; "%s" names it.
    {650, "„%s“ ist eine der Eingaben oder liegt in einem Verzeichnis, das verschlüsselt wird.",
          "\"%s\" is one of the inputs or lies in a directory being encrypted.",
          "«%s» es una de las entradas o está en un directorio que se cifra.",
          "« %s » est l'une des entrées ou se trouve dans un répertoire en cours de chiffrement."},

    {651, "Ein Verzeichnis auf dem Weg zu „%s“ ist eine symbolische Verknüpfung oder kein "
          "Verzeichnis.",
          "A directory on the way to \"%s\" is a symbolic link or no directory.",
          "Un directorio en el camino a «%s» es un enlace simbólico o no es un directorio.",
          "Un répertoire sur le chemin de « %s » est un lien symbolique ou n'est pas un "
          "répertoire."},

    {652, "„%s“ ist keine gewöhnliche Datei (FIFO, Socket oder Gerät).",
          "\"%s\" is not a regular file (a FIFO, socket or device).",
          "«%s» no es un archivo normal (FIFO, socket o dispositivo).",
          "« %s » n'est pas un fichier ordinaire (FIFO, socket ou périphérique)."},

    {653, "Die Größe von „%s“ ist nicht im Voraus bekannt.",
          "The size of \"%s\" is not known in advance.",
          "El tamaño de «%s» no se conoce de antemano.",
          "La taille de « %s » n'est pas connue d'avance."},

    {654, "„%s“ ist eine symbolische Verknüpfung auf ein Verzeichnis und wird nicht verfolgt.",
          "\"%s\" is a symbolic link to a directory and is not followed.",
          "«%s» es un enlace simbólico a un directorio y no se sigue.",
          "« %s » est un lien symbolique vers un répertoire et n'est pas suivi."},

    {655, "„%s“ ist ein leeres Verzeichnis; ein Container enthält nur Dateien.",
          "\"%s\" is an empty directory; a container holds files only.",
          "«%s» es un directorio vacío; un contenedor solo guarda archivos.",
          "« %s » est un répertoire vide ; un conteneur ne contient que des fichiers."},

    {656, "Der Name „%s“ enthält Zeichen, die ein Container nicht speichern kann.",
          "The name \"%s\" holds characters a container cannot store.",
          "El nombre «%s» contiene caracteres que un contenedor no puede guardar.",
          "Le nom « %s » contient des caractères qu'un conteneur ne peut pas enregistrer."},

    {657, "Zwei Einträge würden unter dem Namen „%s“ gespeichert.",
          "Two entries would be stored under the name \"%s\".",
          "Dos entradas se guardarían con el nombre «%s».",
          "Deux entrées seraient enregistrées sous le nom « %s »."},
};
// clang-format on

} // namespace

std::span<const CatalogueRow> CatalogueRows() {
    return kRows;
}

} // namespace kelvora
