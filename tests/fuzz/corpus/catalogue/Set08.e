Y001	256	Thread trimmer solenoid	OUT	0	0
Y002	257	Wiper solenoid	OUT	0	0
Y003	258	Presser foot lifter	OUT	0	0
Y004	259	Reverse feed solenoid	OUT	0	0
Y005	260	Thread tension release	OUT	0	0
Y006	261	Condensation stacker	OUT	0	0
Y007	262	Air blow valve	OUT	0	0
Y008	263	Puller lift valve	OUT	0	0
Y009	264	糸切りソレノイド（補助）	OUT	0	0
Y010	265	Edge guide cylinder	OUT	0	0
Y011	266		OUT	0	0
Y012	267		OUT	0	0
Y013	268		OUT	0	0
Y014	269		OUT	0	0
Y015	270		OUT	0	0
Y016	271		OUT	0	0
Y017	272		OUT	0	0
Y018	273		OUT	0	0
Y019	274		OUT	0	0
Y020	275		OUT	0	0
Y021	276		OUT	0	0
Y022	277		OUT	0	0
Y023	278		OUT	0	0
Y024	279		OUT	0	0
Y025	280		OUT	0	0
Y026	281		OUT	0	0
Y027	282		OUT	0	0
Y028	283		OUT	0	0
Y029	284		OUT	0	0
Y030	285		OUT	0	0
Y031	286		OUT	0	0
Y032	287		OUT	0	0
Y033	288		OUT	0	0
Y034	289		OUT	0	0
Y035	290		OUT	0	0
Y036	291		OUT	0	0
Y037	292		OUT	0	0
Y038	293		OUT	0	0
Y039	294		OUT	0	0
Y040	295		OUT	0	0
EMAKE	511	Makes an edge for the inputs of the next scan	OUT	0	0
BUZZ	320	Buzzer of the operation panel	OUT_S	0	0
LAMP	321	Work lamp	OUT_S	0	0
MSTOP	322	Stops the sewing motor at the needle-up position	OUT_S	0	0
MSLOW	323	Sewing motor at low speed	OUT_S	0	0
ERR	324	エラー表示を出力します	OUT_S	0	0
R001	768	Internal register (kept at power off)	RGST	0	0
R002	769	Internal register	RGST	0	0
R003	770	Internal register	RGST	0	0
R004	771	Internal register	RGST	0	0
R005	772	Internal register	RGST	0	0
R006	773	Internal register	RGST	0	0
R007	774	Internal register	RGST	0	0
R008	775	Internal register	RGST	0	0
R009	776	Internal register	RGST	0	0
R010	777	Internal register	RGST	0	0
R011	778	Internal register	RGST	0	0
R012	779	Internal register	RGST	0	0
R013	780	Internal register	RGST	0	0
R014	781	Internal register	RGST	0	0
R015	782	Internal register	RGST	0	0
R016	783	Internal register	RGST	0	0
CN01	1	Stitch counter (small)	COUNT	0	99
CN16	16	Stitch counter	COUNT	0	9999
CN40	40	Piece counter	COUNT	0	65535
CN41	41	Bobbin counter	COUNT	1	500
J001	-32768	Jump to step 1	JMP	0	0
J002	-32767	Jump to step 2	JMP	0	0
J003	-32766	Jump to step 3	JMP	0	0
J004	-32765	Jump to step 4	JMP	0	0
J005	-32764	Jump to step 5	JMP	0	0
J006	-32763	Jump to step 6	JMP	0	0
J007	-32762	Jump to step 7	JMP	0	0
J008	-32761	Jump to step 8	JMP	0	0
J009	-32760	Jump to step 9	JMP	0	0
J010	-32759	Jump to step 10	JMP	0	0
J011	-32758	Jump to step 11	JMP	0	0
J012	-32757	Jump to step 12	JMP	0	0
J013	-32756	Jump to step 13	JMP	0	0
J014	-32755	Jump to step 14	JMP	0	0
J015	-32754	Jump to step 15	JMP	0	0
J016	-32753	Jump to step 16	JMP	0	0
J017	-32752	Jump to step 17	JMP	0	0
J018	-32751	Jump to step 18	JMP	0	0
J019	-32750	Jump to step 19	JMP	0	0
J020	-32749	Jump to step 20	JMP	0	0
J021	-32748	Jump to step 21	JMP	0	0
J022	-32747	Jump to step 22	JMP	0	0
J023	-32746	Jump to step 23	JMP	0	0
J024	-32745	Jump to step 24	JMP	0	0
J025	-32744	Jump to step 25	JMP	0	0
J026	-32743	Jump to step 26	JMP	0	0
J027	-32742	Jump to step 27	JMP	0	0
J028	-32741	Jump to step 28	JMP	0	0
J029	-32740	Jump to step 29	JMP	0	0
J030	-32739	Jump to step 30	JMP	0	0
J031	-32738	Jump to step 31	JMP	0	0
J032	-32737	Jump to step 32	JMP	0	0
C001	-16384	Call the sub-program at step 1	CALL	0	0
C002	-16383	Call the sub-program at step 2	CALL	0	0
C003	-16382	Call the sub-program at step 3	CALL	0	0
C004	-16381	Call the sub-program at step 4	CALL	0	0
C005	-16380	Call the sub-program at step 5	CALL	0	0
C006	-16379	Call the sub-program at step 6	CALL	0	0
C007	-16378	Call the sub-program at step 7	CALL	0	0
C008	-16377	Call the sub-program at step 8	CALL	0	0
C009	-16376	Call the sub-program at step 9	CALL	0	0
C010	-16375	Call the sub-program at step 10	CALL	0	0
C011	-16374	Call the sub-program at step 11	CALL	0	0
C012	-16373	Call the sub-program at step 12	CALL	0	0
C013	-16372	Call the sub-program at step 13	CALL	0	0
C014	-16371	Call the sub-program at step 14	CALL	0	0
C015	-16370	Call the sub-program at step 15	CALL	0	0
C016	-16369	Call the sub-program at step 16	CALL	0	0
C017	-16368	Call the sub-program at step 17	CALL	0	0
C018	-16367	Call the sub-program at step 18	CALL	0	0
C019	-16366	Call the sub-program at step 19	CALL	0	0
C020	-16365	Call the sub-program at step 20	CALL	0	0
C021	-16364	Call the sub-program at step 21	CALL	0	0
C022	-16363	Call the sub-program at step 22	CALL	0	0
C023	-16362	Call the sub-program at step 23	CALL	0	0
C024	-16361	Call the sub-program at step 24	CALL	0	0
C025	-16360	Call the sub-program at step 25	CALL	0	0
C026	-16359	Call the sub-program at step 26	CALL	0	0
C027	-16358	Call the sub-program at step 27	CALL	0	0
C028	-16357	Call the sub-program at step 28	CALL	0	0
C029	-16356	Call the sub-program at step 29	CALL	0	0
C030	-16355	Call the sub-program at step 30	CALL	0	0
C031	-16354	Call the sub-program at step 31	CALL	0	0
C032	-16353	Call the sub-program at step 32	CALL	0	0
SUB	28672	Start of a sub-program	SUB	0	0
RET	28673	Return to the step after the call	RETURN	0	0
