#include "UserMessage.h"

#include "TidleError.h"

QString userMessage(const std::exception& error)
{
    if (const auto* engineError = dynamic_cast<const TidleError*>(&error))
        return engineError->errorDescription();
    return QString::fromUtf8(error.what());
}
