Option Explicit
Class C
 Private x, y(2)
 Public Default Property Get P(i): P = x + i: End Property
 Property Let P(i, v): x = v: End Property
 Private Sub Class_Initialize: x = 1: End Sub
End Class
Dim o: Set o = New C
o(1) = o.P(2) + Me.x
