#include "sim/object_server.h"

#include <algorithm>

namespace servo::sim {

namespace {

constexpr std::size_t kSegmentBytes = 7;

// Commands of the one who asks.
enum Request : std::uint8_t {
    kWriteUnsized = 0x22,  // four data bytes, as many of them used as the object is wide
    kWrite4 = 0x23,
    kWrite3 = 0x27,
    kWrite2 = 0x2B,
    kWrite1 = 0x2F,
    kRead = 0x40,
    kSegment0 = 0x60,
    kSegment1 = 0x70,
    kAbortTransfer = 0x80,
};

// Commands of the answer.
constexpr std::uint8_t kReadInSegments = 0x41;
constexpr std::uint8_t kWritten = 0x60;
constexpr std::uint8_t kRefused = 0x80;

std::uint8_t read_command(std::size_t size) {
    if (size == 1) return 0x4F;
    if (size == 2) return 0x4B;
    return 0x43;
}

dictionary::Identity identity(const Payload& payload) {
    return payload[2] << 16 | payload[1] << 8 | payload[3];
}

Payload reply_to(const Payload& request, std::uint8_t command, std::uint32_t data) {
    Payload reply{command, request[1], request[2], request[3]};
    for (std::size_t i = 0; i < 4; ++i)
        reply[4 + i] = static_cast<std::uint8_t>(data >> (8 * i));
    return reply;
}

Answer refuse(const Payload& request, dictionary::Identity id, Abort why) {
    return {reply_to(request, kRefused, static_cast<std::uint32_t>(why)), id, true};
}

std::uint32_t data_of(const Payload& request) {
    return request[4] | request[5] << 8 | request[6] << 16 |
           static_cast<std::uint32_t>(request[7]) << 24U;
}

// A number's bytes, those above the object's width zero.
std::uint32_t wire_value(const Object& object, std::int64_t value) {
    const std::size_t size = width(object.type);
    const auto bits = static_cast<std::uint32_t>(value);
    return size >= 4 ? bits : bits & ((1U << (8 * size)) - 1U);
}

}  // namespace

ObjectServer::ObjectServer(ObjectTable& table, Gate gate) : table_(table), gate_(std::move(gate)) {}

void ObjectServer::reset() {
    transfer_.reset();
}

std::optional<Answer> ObjectServer::handle(const Payload& request) {
    const dictionary::Identity id = identity(request);
    switch (request[0]) {
        case kRead:
            return read(request, id);
        case kWrite1:
            return write(request, id, 1);
        case kWrite2:
            return write(request, id, 2);
        case kWrite3:
            return write(request, id, 3);
        case kWrite4:
            return write(request, id, 4);
        case kWriteUnsized:
            return write(request, id, 0);
        case kSegment0:
            return segment(request, false);
        case kSegment1:
            return segment(request, true);
        case kAbortTransfer:
            reset();
            return std::nullopt;
        default:  // a byte off the line, not an enum
            return refuse(request, id, Abort::kUnknownCommand);
    }
}

Abort ObjectServer::may_access(dictionary::Identity id, Object*& object) {
    if (gate_) {
        if (const Abort refused = gate_(id); refused != Abort::kNone) return refused;
    }
    object = table_.find(id);
    if (object != nullptr) return Abort::kNone;
    return table_.has_index(id >> 8) ? Abort::kNoSub : Abort::kNoObject;
}

Answer ObjectServer::read(const Payload& request, dictionary::Identity id) {
    Object* object = nullptr;
    if (const Abort refused = may_access(id, object); refused != Abort::kNone) {
        return refuse(request, id, refused);
    }
    if (object->flags.write_only) return refuse(request, id, Abort::kWriteOnly);
    if (object->owner != nullptr) {
        const Abort refused = object->owner->may_read(*object);
        if (refused != Abort::kNone) return refuse(request, id, refused);
    }
    if (!object->is_number()) return begin_transfer(request, *object);
    const std::uint32_t value = wire_value(*object, table_.read(*object));
    return {reply_to(request, read_command(width(object->type)), value), id, false};
}

Answer ObjectServer::begin_transfer(const Payload& request, Object& object) {
    transfer_ = Transfer{object.id, table_.read_text(object), 0, 0, std::nullopt};
    const auto size = static_cast<std::uint32_t>(transfer_->bytes.size());
    return {reply_to(request, kReadInSegments, size), object.id, false};
}

Answer ObjectServer::segment(const Payload& request, bool toggle) {
    if (!transfer_) return refuse(request, identity(request), Abort::kUnknownCommand);
    Transfer& transfer = *transfer_;
    // The first segment has toggle 0. A request with the toggle of the one before means that its
    // answer did not arrive: the same segment goes out again.
    const bool first = !transfer.last_toggle.has_value();
    if (first && toggle) return refuse(request, transfer.object, Abort::kUnknownCommand);
    const bool again = !first && *transfer.last_toggle == toggle;
    if (!again) {
        if (!first && transfer.next >= transfer.bytes.size()) {
            return refuse(request, transfer.object, Abort::kUnknownCommand);
        }
        transfer.repeat = transfer.next;
        transfer.next = std::min(transfer.next + kSegmentBytes, transfer.bytes.size());
        transfer.last_toggle = toggle;
    }
    const std::size_t used = transfer.next - transfer.repeat;
    const bool last = transfer.next == transfer.bytes.size();
    Answer answer;
    answer.object = transfer.object;
    answer.payload[0] = static_cast<std::uint8_t>((toggle ? 0x10U : 0U) |
                                                  (kSegmentBytes - used) << 1U | (last ? 1U : 0U));
    std::copy_n(transfer.bytes.begin() + static_cast<std::ptrdiff_t>(transfer.repeat), used,
                answer.payload.begin() + 1);
    return answer;
}

Abort ObjectServer::may_write(const Object& object, std::int64_t value) const {
    if (value > object.max) return Abort::kTooHigh;
    if (value < object.min) return Abort::kTooLow;
    return object.owner != nullptr ? object.owner->accept(object, value) : Abort::kNone;
}

Answer ObjectServer::write(const Payload& request, dictionary::Identity id, std::size_t size) {
    Object* object = nullptr;
    if (const Abort refused = may_access(id, object); refused != Abort::kNone) {
        return refuse(request, id, refused);
    }
    if (object->flags.read_only) return refuse(request, id, Abort::kReadOnly);
    if (!object->is_number()) return refuse(request, id, Abort::kUnsupportedAccess);
    const std::size_t wanted = width(object->type);
    if (size != 0 && size != wanted) return refuse(request, id, Abort::kLength);
    // The data bytes above the object's width are whatever the sender had there.
    const std::int64_t value = cut(object->type, data_of(request));
    if (const Abort refused = may_write(*object, value); refused != Abort::kNone) {
        return refuse(request, id, refused);
    }
    table_.store(*object, value);
    // The acknowledgement carries what was taken, as a check for the sender.
    return {reply_to(request, kWritten, wire_value(*object, value)), id, false};
}

}  // namespace servo::sim
