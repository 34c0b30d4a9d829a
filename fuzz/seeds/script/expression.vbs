x = -2 ^ -1 \ 3 Mod &HFF& Xor Not a Is Nothing And "q""q" & #1/2/2003 4:05 PM# _
  Imp [a b](1).c <> .5e-3 