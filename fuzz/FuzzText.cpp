// Encrypted texts: the decoder, and the whole decrypt-text command in-process.
#include "FuzzSupport.h"
#include "cli/Commands.h"
#include "crypto/CRijndael.h"
#include "crypto/KeyRules.h"
#include "text/EncryptedText.h"

#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace kelvora;
    const std::string armoured(reinterpret_cast<const char*>(data), size);
    CRijndael cipher;
    (void)DecryptText(cipher, MakePassphraseKey(fuzz::kPassphrase).bytes(), armoured);

    std::istringstream in(armoured);
    std::ostringstream out;
    std::ostringstream err;
    cli::CliContext context{in,
                            out,
                            err,
                            [](const char* name) -> std::optional<std::string> {
                                if (std::string_view(name) == "KELVORA_PASSPHRASE") {
                                    return fuzz::kPassphrase;
                                }
                                return std::nullopt;
                            },
                            nullptr,
                            false};
    const std::vector<std::string> args = {"decrypt-text"};
    const int status = cli::RunCli(context, args);
    if (status != 0 && status != 1) {
        fuzz::Stop("decrypt-text ended with status " + std::to_string(status));
    }
    if (status == 1 && (!out.str().empty() || err.str().find('\n') + 1 != err.str().size())) {
        fuzz::Stop("a failed decrypt-text wrote output or more than one error line");
    }
    return 0;
}
