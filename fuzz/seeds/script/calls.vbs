f (1), 2: g(1) + 2, 3: h , 4: Call k((x), y(1)): s = s & "a" & s
Sub f(ByVal a, b()): ReDim Preserve a(1, n): Erase b: On Error Resume Next: End Sub