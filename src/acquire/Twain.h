#pragma once

#include <cstdint>
#include <functional>

// What the program speaks of the published TWAIN interface: an operation is a triplet of data group, data argument
// type and message, carried out on a record by the source manager's one entry point. Constants have their published
// names and values.

namespace velmor::twain {

// Data groups.
inline constexpr std::uint32_t DG_CONTROL = 1;
inline constexpr std::uint32_t DG_IMAGE = 2;

// Data argument types.
inline constexpr std::uint16_t DAT_EVENT = 0x0002;
inline constexpr std::uint16_t DAT_IDENTITY = 0x0003;
inline constexpr std::uint16_t DAT_PARENT = 0x0004;
inline constexpr std::uint16_t DAT_PENDINGXFERS = 0x0005;
inline constexpr std::uint16_t DAT_STATUS = 0x0008;
inline constexpr std::uint16_t DAT_USERINTERFACE = 0x0009;
inline constexpr std::uint16_t DAT_IMAGENATIVEXFER = 0x0104;
inline constexpr std::uint16_t DAT_IMAGEFILEXFER = 0x0105;

// Messages.
inline constexpr std::uint16_t MSG_NULL = 0x0000;
inline constexpr std::uint16_t MSG_GET = 0x0001;
inline constexpr std::uint16_t MSG_GETDEFAULT = 0x0003;
inline constexpr std::uint16_t MSG_RESET = 0x0007;
inline constexpr std::uint16_t MSG_XFERREADY = 0x0101;
inline constexpr std::uint16_t MSG_CLOSEDSREQ = 0x0102;
inline constexpr std::uint16_t MSG_OPENDSM = 0x0301;
inline constexpr std::uint16_t MSG_CLOSEDSM = 0x0302;
inline constexpr std::uint16_t MSG_OPENDS = 0x0401;
inline constexpr std::uint16_t MSG_CLOSEDS = 0x0402;
inline constexpr std::uint16_t MSG_USERSELECT = 0x0403;
inline constexpr std::uint16_t MSG_DISABLEDS = 0x0501;
inline constexpr std::uint16_t MSG_ENABLEDS = 0x0502;
inline constexpr std::uint16_t MSG_PROCESSEVENT = 0x0601;
inline constexpr std::uint16_t MSG_ENDXFER = 0x0701;

// Return codes.
inline constexpr std::uint16_t TWRC_SUCCESS = 0;
inline constexpr std::uint16_t TWRC_FAILURE = 1;
inline constexpr std::uint16_t TWRC_CANCEL = 3;
inline constexpr std::uint16_t TWRC_DSEVENT = 4;
inline constexpr std::uint16_t TWRC_NOTDSEVENT = 5;
inline constexpr std::uint16_t TWRC_XFERDONE = 6;

// Condition codes, which say why an operation failed.
inline constexpr std::uint16_t TWCC_SUCCESS = 0;
inline constexpr std::uint16_t TWCC_LOWMEMORY = 2;
inline constexpr std::uint16_t TWCC_NODS = 3;
inline constexpr std::uint16_t TWCC_OPERATIONERROR = 5;
inline constexpr std::uint16_t TWCC_BADPROTOCOL = 9;
inline constexpr std::uint16_t TWCC_SEQERROR = 11;

inline constexpr std::uint16_t protocolMajor = 1;
inline constexpr std::uint16_t protocolMinor = 9;
inline constexpr std::uint16_t languageEnglish = 2;
inline constexpr std::uint16_t countryUsa = 1;

// The records lie in memory with fields aligned to two bytes.
#pragma pack(push, 2)

/// 32 characters and a terminator, rounded up.
using CText32 = char[34];

struct CVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t language = 0;
    std::uint16_t country = 0;
    CText32 info = {};
};

/// Who an application or a source is.
struct CIdentity {
    std::uint32_t id = 0; ///< given by the source manager
    CVersion version;
    std::uint16_t protocolMajor = 0;
    std::uint16_t protocolMinor = 0;
    std::uint32_t supportedGroups = 0;
    CText32 manufacturer = {};
    CText32 productFamily = {};
    CText32 productName = {};
};

struct CUserInterface {
    std::uint16_t showUi = 0;
    std::uint16_t modalUi = 0;
    void* parent = nullptr;
};

struct CEvent {
    void* event = nullptr; ///< the window system's own
    std::uint16_t message = MSG_NULL;
};

struct CPendingTransfers {
    std::uint16_t count = 0;
    std::uint32_t reserved = 0;
};

struct CStatusRecord {
    std::uint16_t conditionCode = 0;
    std::uint16_t reserved = 0;
};

#pragma pack(pop)

static_assert(sizeof(CIdentity) == 156);
static_assert(sizeof(CUserInterface) == 4 + sizeof(void*));
static_assert(sizeof(CEvent) == sizeof(void*) + 2);
static_assert(sizeof(CPendingTransfers) == 6);

/// `DSM_Entry`: the application, the source (null for what concerns the manager alone), the triplet and its record.
using DsmEntryFunction = std::uint16_t(CIdentity* application, CIdentity* source, std::uint32_t group,
                                       std::uint16_t type, std::uint16_t message, void* record);
using DsmEntry = std::function<DsmEntryFunction>;

} // namespace velmor::twain
