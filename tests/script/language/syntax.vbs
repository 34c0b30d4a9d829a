' What the compiler refuses.
Check ErrorOf("x = (1"), 1006
Check ErrorOf("x ="), 1002
Check ErrorOf("x = 1 +"), 1002
Check ErrorOf("x = 1 2"), 1025
Check ErrorOf("If x"), 1017
Check ErrorOf("If x Then" & vbLf & "y = 1"), 1014
Check ErrorOf("If x Then" & vbLf & "End Sub"), 1012
Check ErrorOf("For i = 1"), 1013
Check ErrorOf("For i 1"), 1011
Check ErrorOf("For i = 1 To 2" & vbLf & "Wend"), 1020
Check ErrorOf("For a(1) = 1 To 2: Next"), 1040
Check ErrorOf("For i = 1 To 2: Next i"), 1025
Check ErrorOf("For Each x Of y: Next"), 1046
Check ErrorOf("Do" & vbLf & "Wend"), 1019
Check ErrorOf("Do x: Loop"), 1028
Check ErrorOf("Loop"), 1038
Check ErrorOf("Next"), 1055
Check ErrorOf("While x" & vbLf & "End If"), 1018
Check ErrorOf("Select x"), 1021
Check ErrorOf("Select Case x" & vbLf & "y = 1" & vbLf & "End Select"), 1021
Check ErrorOf("Select Case x" & vbLf & "Case 1" & vbLf & "End If"), 1022
Check ErrorOf("With x" & vbLf & "End If"), 1029
Check ErrorOf("Exit For"), 1039
Check ErrorOf("Exit Sub"), 1039
Check ErrorOf("Sub s" & vbLf & "Exit Function" & vbLf & "End Sub"), 1039
Check ErrorOf("Dim x, X"), 1041
Check ErrorOf("Sub s(a, a): End Sub"), 1041
Check ErrorOf("Sub s(a): Dim a: End Sub"), 1041
Check ErrorOf("Sub s: End Sub: Function s: End Function"), 1041
Check ErrorOf("Dim 5"), 1010
Check ErrorOf("Dim x(n)"), 1026
Check ErrorOf("Dim x(-1)"), 1026
Check ErrorOf("Const c"), 1011
Check ErrorOf("Const c = n"), 1045
Check ErrorOf("ReDim x"), 1005
Check ErrorOf("Sub s" & vbLf & "End Function"), 1016
Check ErrorOf("Function f" & vbLf & "End Sub"), 1015
Check ErrorOf("Sub s: Sub t: End Sub: End Sub"), 1002
Check ErrorOf("s(1, 2)"), 1044
Check ErrorOf("x = 1: Option Explicit"), 1024
Check ErrorOf("On Error Resume"), 1020
Check ErrorOf("On Error GoTo label"), 1002
Check ErrorOf("5 = x"), 1024
Check ErrorOf("Property Get p: End Property"), 1048
Check ErrorOf("Class c: x = 1: End Class"), 1002
Check ErrorOf("Class c: Sub s: End Sub"), 1014
Check ErrorOf("Class c: End Sub"), 1047
Check ErrorOf("Class c: Property p: End Property: End Class"), 1049
Check ErrorOf("Class c: Property Let p: End Property: End Class"), 1054
Check ErrorOf("Class c: Property Get p: End Sub: End Class"), 1050
Check ErrorOf("Class c: Property Get p(a): End Property: Property Let p(v): End Property: End Class"), 1051
Check ErrorOf("Class c: Public Default Function f: End Function: Public Default Function g: End Function: End Class"), 1052
Check ErrorOf("Class c: Sub Class_Initialize(a): End Sub: End Class"), 1053
Check ErrorOf("Class c: Public Default x: End Class"), 1056
Check ErrorOf("Class c: Default Function f: End Function: End Class"), 1057
Check ErrorOf("Class c: Public Default Property Let p(v): End Property: End Class"), 1058
Check ErrorOf("Class c: Public x, x: End Class"), 1041

' What only looks odd.
Check ErrorOf(""), 0
Check ErrorOf(":::" & vbCr & ": x = 1 :"), 0
Check ErrorOf("Dim [end]: [end] = 1"), 0
Check ErrorOf("step = 1: error = 2: property = 3: default = 4: explicit = 5: preserve = 6"), 0
Check ErrorOf("x=1:If x=1Then y=2"), 0
Check ErrorOf("Set o = CreateObject(""Scripting.Dictionary""): o.Add ""end"", 1: x = o.Item(""end"")"), 0
