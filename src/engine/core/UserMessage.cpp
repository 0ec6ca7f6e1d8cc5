#include "UserMessage.h"

#include "Localization.h"
#include "TidleError.h"

QString userMessage(const std::exception& error)
{
    if (const auto* engineError = dynamic_cast<const TidleError*>(&error))
        return engineError->errorDescription();
    const QString message = QString::fromUtf8(error.what()).trimmed();
    // A failure that says nothing still gets a sentence rather than an empty line.
    return message.isEmpty() ? localized("diag.unknown") : message;
}
