 NO	0	No function	NONE
ST  	1	Start switch	STANDARD
FS  	2	Foot switch	STANDARD
TH  	3	Thread trimming switch	STANDARD
BT  	4	Back tack switch	STANDARD
HU  	5	Needle up/down switch	STANDARD
SF1 	6	Safety switch 1	SAFETY
SF2 	7	Safety switch 2	SAFETY
CR  	8	Counter reset	COUNTER
CU  	9	‰ºŽ…ƒJƒEƒ“ƒ^‰ÁŽZ	COUNTER
GP1 	64	General purpose input 1	GENERAL
GP2 	65	General purpose input 2	GENERAL
