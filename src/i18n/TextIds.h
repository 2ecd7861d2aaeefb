#pragma once

// The catalogue texts the program names in code, by meaning, with the German id the catalogue
// keys them by and the English wording for the reader. Window marks ("#161") and GetText take
// these ids; one list serves both the constants and kNamedTextIds, so a test can walk every
// text the program shows.
#include <array>

// clang-format off
#define KELVORA_NAMED_TEXTS(X) \
    X(kGeneralErrorId, 103) /* Error: */ \
    X(kOpenButtonId, 105) /* Open */ \
    X(kGeneratedPassphraseMessageId, 106) /* A random password with maximum security w... */ \
    X(kNoUsableContentText, 108) /* File has no usable content! */ \
    X(kAllFilesFilter, 109) /* All files (*.*)|*.* */ \
    X(kSaveContentTitle, 110) /* Save file content */ \
    X(kSaveButtonId, 111) /* Save */ \
    X(kCheckNamesAndPassphraseText, 114) /* Error: Please check the filename(s) and p... */ \
    X(kEncryptedFileSavedText, 116) /* The encrypted file has been saved as "%s". */ \
    X(kChooseFilesToEncryptTitle, 121) /* Select file to encrypt */ \
    X(kChooseContainerTitle, 122) /* Select file to decrypt */ \
    X(kContainerFilter, 123) /* Encrypted files (*.vexo)|*.vexo */ \
    X(kNotSecureSentence, 124) /* This passphrase is not secure. */ \
    X(kCrackableSentence, 125) /* This passphrase can presumably be cracked. */ \
    X(kOneComputerSentence, 126) /* This passphrase is secure enough to withs... */ \
    X(kManyComputersSentence, 127) /* This passphrase is secure enough to withs... */ \
    X(kMaximumSecuritySentence, 128) /* This passphrase provides maximum of secur... */ \
    X(kSpaceKeyText, 129) /* Space */ \
    X(kTabKeyText, 130) /* Tab */ \
    X(kWorkingCaption, 142) /* Working */ \
    X(kPleaseWaitHint, 143) /* Please wait for the calculations to be co... */ \
    X(kEncryptFilesHint, 144) /* Files can be securely encrypted with Kelv... */ \
    X(kInputFilesCaption, 145) /* Input Files */ \
    X(kOutputFileCaption, 146) /* Output File */ \
    X(kDecryptFileCaption, 148) /* Decrypt file: */ \
    X(kPassphrasePrompt, 149) /* Please enter one or more words as the enc... */ \
    X(kCancelButtonId, 150) /* Cancel */ \
    X(kOkButtonId, 151) /* OK */ \
    X(kStartButtonText, 152) /* Start */ \
    X(kOutputFolderCaption, 153) /* Output directory: */ \
    X(kCreateRandomText, 155) /* Create random */ \
    X(kScreenKeyboardButtonText, 156) /* Enter via Screen-Keyboard */ \
    X(kHidePassphraseText, 158) /* Hide passphrase */ \
    X(kPassphraseQualityCaption, 159) /* Passphrase quality: */ \
    X(kOnlineVersionText, 160) /* Switch to online version */ \
    X(kEncryptTextButtonText, 161) /* Encrypt text */ \
    X(kDecryptTextButtonText, 162) /* Decrypt text */ \
    X(kTextBoxCaption, 165) /* Text to encrypt or decrypt: */ \
    X(kTextPageTabText, 166) /* Encrypt/Decrypt Text */ \
    X(kFilesPageTabText, 167) /* Encrypt/Decrypt Files */ \
    X(kScreenKeyboardTitle, 169) /* Screen Keyboard */ \
    X(kOverwriteQuestion, 178) /* The output file %s already exists. Do you... */ \
    X(kAddButtonText, 179) /* Add */ \
    X(kRemoveButtonText, 180) /* Remove */ \
    X(kSendByMailText, 181) /* Send by mail */ \
    X(kEncryptFilesText, 183) /* Encrypt */ \
    X(kDecryptFilesText, 184) /* Decrypt */ \
    X(kRememberPassphraseText, 190) /* Be sure to memorize the password used to... */ \
    X(kAuthoriseCertificateText, 191) /* Please authorize the special security ser... */ \
    X(kFilesOptionText, 192) /* Files */ \
    X(kFoldersOptionText, 193) /* Directory structure */ \
    X(kWrongPassphraseText, 194) /* Error: There is either a device error or... */ \
    X(kWelcomeTitle, 200) /* Welcome... */ \
    X(kDoYouKnowHeading, 201) /* Do you already know %s? */ \
    X(kCookieToolText, 202) /* Removes tracking cookies from all your br... */ \
    X(kShredderToolText, 203) /* Shreds deleted files so that no tool can... */ \
    X(kKeyCountMessageId, 385) /* The number of keys must be between 1 and 10. */ \
    X(kEmptyKeyMessageId, 386) /* Key %s is empty. Please enter every key b... */ \
    X(kSinglePassphraseText, 390) /* Single Passphrase */ \
    X(kSharedSecurityText, 391) /* Shared Security */ \
    X(kKeysCaption, 392) /* Keys */ \
    X(kAlreadyListedText, 393) /* One or more files already exist in the en... */ \
    X(kMailTitle, 394) /* Send via Email */ \
    X(kSenderNameCaption, 395) /* Your name: */ \
    X(kSenderAddressCaption, 396) /* Your email address: */ \
    X(kRecipientAddressCaption, 397) /* Recipient's email address: */ \
    X(kMailMessageCaption, 398) /* Optional message to the recipient (not en... */ \
    X(kNoPassphraseInMailWarning, 399) /* Do NOT include the passphrase! */ \
    X(kSendButtonText, 400) /* Send */ \
    X(kMailSentText, 401) /* The message has been successfully sent! */ \
    X(kSendErrorText, 402) /* Error sending the message */ \
    X(kConnectionNeededText, 403) /* Internet connection needed. */ \
    X(kInvalidAddressText, 404) /* Invalid Email address! */ \
    X(kControlBoxTip, 500) /* Left: minimize, right: close */ \
    X(kFirstLanguageNameId, 501) /* Deutsch */ \
    X(kUsageTextId, 505) /* Parameters for Kelvora: */ \
    X(kNameTooLongText, 510) /* The name of "%s" is too long to be stored... */ \
    X(kNameLeavesFolderText, 511) /* The name "%s" would lead outside the outp... */ \
    X(kCannotReadText, 512) /* "%s" cannot be read. */ \
    X(kCannotWriteText, 513) /* "%s" cannot be written. */ \
    X(kDamagedDataText, 514) /* The data of "%s" are damaged. */ \
    X(kCannotCompressText, 515) /* "%s" cannot be compressed. */ \
    X(kOutputIsInputText, 516) /* The output file "%s" is itself one of the... */ \
    X(kCurrentFileText, 517) /* File: %s */ \
    X(kSpeedText, 518) /* %s per second, about %d s left */ \
    X(kListInfoText, 519) /* %d entries, %s */ \
    X(kRestoredText, 520) /* %d file(s) restored in %s */ \
    X(kNotRestoredText, 521) /* Not restored: %s */ \
    X(kBrowseButtonText, 522) /* Browse… */ \
    X(kPagesName, 523) /* Pages */ \
    X(kMinimiseName, 524) /* Minimize */ \
    X(kCloseName, 525) /* Close */ \
    X(kChooseFolderToEncryptTitle, 526) /* Select a directory to encrypt */ \
    X(kChooseOutputFolderTitle, 527) /* Select the output directory */ \
    X(kRemoveLastKeyName, 550) /* Delete the last character */ \
    X(kShiftKeyName, 551) /* Capital letters */ \
    X(kNormalSizeText, 552) /* Normal size */ \
    X(kDoubleSizeText, 553) /* Double size */ \
    X(kAboutButtonText, 554) /* About Kelvora */ \
    X(kMailTooLongText, 555) /* The text is too long to be sent by mail:... */ \
    X(kSendingText, 556) /* Sending... */ \
    X(kEncryptedTextCaption, 557) /* Encrypted text: */ \
    X(kNotSendableText, 558) /* This character cannot be sent by mail, be... */ \
    X(kProductDescriptionText, 560) /* Kelvora encrypts texts, files and whole f... */ \
    X(kVersionLineText, 561) /* Version %s */ \
    X(kPrivacyHeading, 562) /* How private is your browser? */ \
    X(kPrivacyParagraph, 563) /* Every web site you visit learns more abou... */ \
    X(kPrivacyAction, 564) /* Take the test now, it takes one minute: */ \
    X(kPrivacyLinkText, 565) /* Start the privacy test */ \
    X(kToolboxParagraph, 566) /* The toolbox from the makers of this progr... */ \
    X(kToolboxAction, 567) /* Try it free for 30 days: */ \
    X(kToolboxLinkText, 568) /* Download the toolbox */ \
    X(kAllProductsLinkText, 569) /* All our products */ \
    X(kTrialHeading, 570) /* Surf without leaving traces */ \
    X(kTrialParagraph, 571) /* Our partner's anonymising service hides y... */ \
    X(kTrialAction, 572) /* Users of this program try it free for a m... */ \
    X(kTrialLinkText, 573) /* Start the free trial */ \
    X(kYesButtonId, 580) /* Yes */ \
    X(kNoButtonId, 581) /* No */ \
    X(kNextKeyTip, 582) /* Go to next key */ \
    X(kPreviousKeyTip, 583) /* Go to previous key */ \
    X(kDecryptionOnlyHint, 584) /* The shared keys serve decryption. Encrypt... */ \
    X(kPlaceFilledName, 585) /* Key %s: entered */ \
    X(kPlaceEmptyName, 586) /* Key %s: empty */ \
    X(kKeyOnShowName, 587) /* Key on show */ \
    X(kUnholdablePassphraseMessageId, 588) /* The passphrase contains the character %s,... */ \
    X(kUnholdableCharacterWarningId, 589) /* The character %s counts as "?" in the key. */ \
    X(kOnlyFirst32WarningId, 590) /* Only the first 32 characters are used. */ \
    X(kUnsupportedInTextQuestionId, 591) /* The text contains the character %s at pos... */ \
    X(kNoBannerQuestionId, 592) /* The decrypted text does not begin with th... */ \
    X(kEntriesLeftOutId, 610) /* %d entries were left out; everything else... */ \
    X(kSeveralArmoursMessageId, 630) /* The text holds %s encrypted texts. The on... */ \
    X(kInputInsideOutputText, 650) /* "%s" is one of the inputs or lies in a di... */ \
    X(kLinkInPathText, 651) /* A directory on the way to "%s" is a symbo... */ \
    X(kNotRegularFileText, 652) /* "%s" is not a regular file (a FIFO, socke... */ \
    X(kSizeUnknownText, 653) /* The size of "%s" is not known in advance. */ \
    X(kLinkToFolderText, 654) /* "%s" is a symbolic link to a directory an... */ \
    X(kEmptyFolderText, 655) /* "%s" is an empty directory; a container h... */ \
    X(kNameNotStorableText, 656) /* The name "%s" holds characters a containe... */ \
    X(kDuplicateNameText, 657) /* Two entries would be stored under the nam... */
// clang-format on

namespace kelvora {

#define KELVORA_TEXT_CONSTANT(name, id) inline constexpr int name = id;
KELVORA_NAMED_TEXTS(KELVORA_TEXT_CONSTANT)
#undef KELVORA_TEXT_CONSTANT

// The language names follow the first one in the order of the language offsets.
inline constexpr std::array kLanguageNameIds{kFirstLanguageNameId, kFirstLanguageNameId + 1,
                                             kFirstLanguageNameId + 2, kFirstLanguageNameId + 3};

#define KELVORA_TEXT_ID(name, id) id,
// kNamedTextIds is every id above, in the list's order.
inline constexpr std::array kNamedTextIds{KELVORA_NAMED_TEXTS(KELVORA_TEXT_ID)};
#undef KELVORA_TEXT_ID

} // namespace kelvora
