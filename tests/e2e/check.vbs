' What the scripts beside this file call when tessary-macro runs them: a line `Check actual, expected` that fails is
' printed with both values, and the number of such lines is the value of Failures.
Dim Failures : Failures = 0
Dim Checks : Checks = 0

Sub Check(actual, expected)
  Checks = Checks + 1
  Dim shown : shown = Show(actual)
  If shown <> Show(expected) Then
    Failures = Failures + 1
    WScript.Echo "check " & Checks & ": " & shown & ", expected " & Show(expected)
  End If
End Sub

' Type and value. Whole numbers beside a line are written without CLng and CByte.
Function Show(value)
  If IsObject(value) Then
    Show = TypeName(value)
  ElseIf IsArray(value) Then
    Dim element
    Show = "Array("
    For Each element In value : Show = Show & Show(element) & ", " : Next
    Show = Show & ")"
  ElseIf IsNull(value) Or VarType(value) = vbError Then
    Show = TypeName(value)
  Else
    Show = Replace(Replace(TypeName(value), "Long", "Integer"), "Byte", "Integer") & " " & value
  End If
End Function

Function ErrorOf(statements)
  On Error Resume Next
  Execute statements
  ErrorOf = Err.Number
End Function

Function ErrorIn(expression)
  Dim ignored
  On Error Resume Next
  ignored = Eval(expression)
  ErrorIn = Err.Number
End Function
