#pragma once

#include <ports/BackgroundTransfers.h>

#include <QJsonObject>

#include <optional>

// The words between a program and the helper: one JSON object each, `op` says which.
//
// program to helper
//   hello     version
//   tasks                             asks what is under way; from then on the program receives events
//   start     url, userAgent, sizeHint
//   cancel    key
//   discard   key                     cancel, and remove what is there
//   taken     key                     the finished file has been dealt with
//   kept      key                     the finished file could not be taken, and waits to be asked for again
//   leave                             end; another version of the helper is wanted
// helper to program
//   hello     version
//   tasks     tasks: [{key, url, received, expected}]
//   progress  key, received, expected
//   finished  key, status, file       to one program only, until it is gone or has taken the file
//   completed key, error (absent: none), detail, resume
//   delivered                         all that had ended before has been told
namespace tulvane::transfers {

[[nodiscard]] QJsonObject message(const char* op);
[[nodiscard]] QJsonObject message(const char* op, const QString& key);
[[nodiscard]] QJsonObject startMessage(const TransferRequest& request);
/// None when the message has no usable address.
[[nodiscard]] std::optional<TransferRequest> requestIn(const QJsonObject& message);
[[nodiscard]] QJsonObject completedMessage(const QString& key, const std::optional<TransferError>& error);
[[nodiscard]] std::optional<TransferError> errorIn(const QJsonObject& message);
[[nodiscard]] qint64 numberIn(const QJsonObject& message, const char* key, qint64 otherwise);

} // namespace tulvane::transfers
