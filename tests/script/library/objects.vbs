' Scripting.Dictionary: any key but an array, in the order in which they came
Dim d, key, all
Set d = CreateObject("scripting.dictionary")
d.Add "a", 1
d("b") = 2
d.Item(3) = "x"
Set d(d) = d
Check d.Count, CLng(4)
Check d.Exists(3.0) & d.Exists("3") & d.Exists(d) & d.Exists("A"), "TrueFalseTrueFalse"
d.Remove d
For Each key In d : all = all & key & "=" & d(key) & ";" : Next
Check all, "a=1;b=2;3=x;"
Check IsEmpty(d("new")), True
Check d.Exists("new"), True
d.Key("a") = "A"
Check Join(d.Keys, ","), "A,b,3,new"
Check d.Items()(2), "x"
Check ErrorIn("d.Add(""b"", 1)"), CLng(457)
Check ErrorIn("d.Remove(""zz"")"), CLng(32811)
Check ErrorIn("d.Exists(Array(1))"), CLng(5)
Check ErrorIn("d.NoSuch"), CLng(438)
On Error Resume Next
d.CompareMode = vbTextCompare
Check Err.Number, CLng(5)
On Error GoTo 0
d.RemoveAll
Check UBound(d.Keys), CLng(-1)
d.CompareMode = vbTextCompare
d("É") = 1
Check d("é"), 1

' The language about itself
Check ScriptEngine & ScriptEngineMajorVersion & "." & ScriptEngineMinorVersion, "VBScript5.8"
Check GetLocale, CLng(1033)
Check SetLocale("en-us"), CLng(1033)
Check ErrorIn("SetLocale(1031)"), CLng(447)
Check ErrorIn("CreateObject(""No.Such"")"), CLng(429)
Check ErrorIn("MsgBox(""x"")"), CLng(70)
Check ErrorIn("InputBox(""x"")"), CLng(70)
Check ErrorIn("LoadPicture(""x"")"), CLng(445)
Check TypeName(Nothing) & TypeName(Array()) & TypeName(d) & TypeName(Null), "NothingVariant()DictionaryNull"
Check VarType(Array()) & "," & VarType(d) & "," & VarType(#1/1/2000#) & "," & VarType(CByte(1)), "8204,9,7,17"
Check IsNumeric(Empty) & IsNumeric(True) & IsNumeric(#1/1/2000#) & IsNumeric(d), "TrueTrueFalseFalse"
Check IsObject(Nothing) & IsArray(d.Items) & IsDate(Null), "TrueTrueFalse"
Check vbNewLine & vbTab & vbNullChar, Chr(13) & Chr(10) & Chr(9) & Chr(0)
Check vbYellow + vbObjectError, CLng(-2147155969)

Dim shell
Set shell = CreateObject("WScript.Shell")
Check shell.ExpandEnvironmentStrings("100% %NO_SUCH_NAME% %"), "100% %NO_SUCH_NAME% %"
