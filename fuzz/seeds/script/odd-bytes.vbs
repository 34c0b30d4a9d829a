Rem Ã¤
Ã¼ber = 1 ' ÿþx = "open
[open
#open
&H
1e+
_ 
@