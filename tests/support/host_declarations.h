// Methods of the host that the library looks up, by its declarations of them.
#pragma once

inline constexpr char kDictionarySetter[] = "Value(key As Variant, Assigns _value As Variant)";
inline constexpr char kDictionaryGetter[] = "Value(key As Variant) As Variant";
inline constexpr char kDictionaryKeyGetter[] = "Key(index As Integer) As Variant";
inline constexpr char kMemoryBlockConstructor[] = "Constructor(bytes as Integer)";
inline constexpr char kConvertToPointer[] = "Operator_Convert() As Ptr";
inline constexpr char kTrueItem[] = "TrueItem(Index as integer) as Folderitem";
inline constexpr char kGetTrueFolderItem[] =
    "GetTrueFolderItem(path As String, pathMode As Integer) As FolderItem";
inline constexpr char kLenB[] = "LenB( s as string ) as integer";
inline constexpr char kVarType[] = "VarType(value As Variant) As Integer";
