// The ADO constants the module passes by number.
#pragma once

namespace ado {

// Naming: the data access objects keep the names of the old objects and their
// members (Open, MoveNext, RecordCount, BeginTrans). Properties are read by a
// call without arguments and set by a call with one (rs.Source(), cmd.CommandText("x")).
// EOF and BOF are C macros, so those two are Eof() and Bof(). Tools of this
// port that the old objects did not have use ordinary C++ names (traceSql).

// CursorTypeEnum
inline constexpr int adOpenUnspecified = -1;
inline constexpr int adOpenForwardOnly = 0;
inline constexpr int adOpenKeyset = 1;
inline constexpr int adOpenDynamic = 2;
inline constexpr int adOpenStatic = 3;

// LockTypeEnum
inline constexpr int adLockUnspecified = -1;
inline constexpr int adLockReadOnly = 1;
inline constexpr int adLockPessimistic = 2;
inline constexpr int adLockOptimistic = 3;
inline constexpr int adLockBatchOptimistic = 4;

// ObjectStateEnum
inline constexpr int adStateClosed = 0;
inline constexpr int adStateOpen = 1;

// EditModeEnum
inline constexpr int adEditNone = 0;
inline constexpr int adEditInProgress = 1;
inline constexpr int adEditAdd = 2;

// PositionEnum: what AbsolutePosition gives where there is no row.
inline constexpr long adPosUnknown = -1;
inline constexpr long adPosBOF = -2;
inline constexpr long adPosEOF = -3;

// CommandTypeEnum
inline constexpr int adCmdUnspecified = -1;
inline constexpr int adCmdText = 1;
inline constexpr int adCmdTable = 2;
inline constexpr int adCmdStoredProc = 4;
inline constexpr int adCmdUnknown = 8;

// ParameterDirectionEnum
inline constexpr int adParamInput = 1;
inline constexpr int adParamOutput = 2;
inline constexpr int adParamInputOutput = 3;
inline constexpr int adParamReturnValue = 4;

} // namespace ado
