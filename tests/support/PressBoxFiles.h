#pragma once
// Press-box game files written from the format's public descriptions, for the import's tests.

namespace scorvane::testing {

// A whole game with both sides, totals only: no play by play, so kicks and returns are left for
// the coach to enter.
inline constexpr const char* kTotalsOnly = R"(<?xml version="1.0"?>
<fbgame source="press box">
  <venue gameid="G1" visid="RIV" homeid="CEN" visname="Riverside" homename="Central"
         date="9/21/2019" location="Central Field" stadium="Memorial"/>
  <team vh="V" id="RIV" name="Riverside">
    <linescore prds="5" line="7,0,3,7,3" score="20">
      <lineprd prd="1" score="7"/><lineprd prd="2" score="0"/><lineprd prd="3" score="3"/>
      <lineprd prd="4" score="7"/><lineprd prd="5" score="3"/>
    </linescore>
    <player name="Kell, Ada" uni="12" code="12" gp="1">
      <pass comp="14" att="22" int="1" yds="187" td="2" long="45" sacks="3" sackyds="19"/>
      <rush att="4" yds="-6" gain="5" loss="11" td="0" long="5"/>
      <fumbles no="2" lost="1"/>
      <pat passatt="1" passmade="1"/>
    </player>
    <player name="Ortiz, Ben" uni="22" code="22" gp="1">
      <rush att="18" yds="96" gain="101" loss="5" td="1" long="31"/>
      <rcv no="3" yds="27" td="1" long="15"/>
      <pat rushmade="1" rcvmade="1"/>
      <kr no="2" yds="41" td="0" long="23"/>
    </player>
    <player name="Lund, Cy" uni="44M" code="44M" gp="1">
      <defense tackua="6" tacka="3" tot_tack="9" sacks="1.5" sackyds="12" brup="2" qbh="1" ff="1" fr="1"/>
      <ir no="1" yds="14" td="1" long="14"/>
      <ko no="4" yds="240" tb="2"/>
    </player>
    <player name="Pratt, Di" uni="3" code="3" gp="1">
      <fg made="2" att="3" long="41" blkd="0"/>
      <pat kickatt="2" kickmade="2"/>
      <punt no="5" yds="201" long="52" inside20="2"/>
    </player>
    <player name="TEAM" uni="" code="TM"><rush att="2" yds="-3"/></player>
  </team>
  <team vh="H" id="CEN" name="Central">
    <linescore prds="5" line="0,10,7,0,0" score="17">
      <lineprd prd="1" score="0"/><lineprd prd="2" score="10"/><lineprd prd="3" score="7"/>
      <lineprd prd="4" score="0"/><lineprd prd="5" score="0"/>
    </linescore>
    <player name="Moss, Eli" uni="7" gp="1"><rush att="9" yds="40" td="1" long="12"/></player>
  </team>
</fbgame>
)";

// The same visitors' kicker and returner with every kick and return in the play by play.
inline constexpr const char* kPlayByPlay = R"(<?xml version="1.0"?>
<fbgame>
  <venue date="10/4/2019" location="Riverside"/>
  <team vh="H" id="RIV" name="Riverside">
    <linescore><lineprd prd="1" score="3"/></linescore>
    <player name="Pratt, Di" uni="3">
      <fg made="1" att="2" long="38"/><pat kickatt="1" kickmade="0"/><punt no="2" yds="81" long="44"/>
    </player>
    <player name="Ortiz, Ben" uni="22"><pr no="2" yds="15" long="15"/><kr no="1" yds="98" td="1"/></player>
  </team>
  <team vh="V" id="CEN" name="Central"><linescore><lineprd prd="1" score="0"/></linescore></team>
  <plays format="summary"><qtr number="1">
    <play type="K"><p_fg vh="H" name="Pratt, Di" dist="38" result="G"/></play>
    <play type="K"><p_pu vh="H" uni="3" gain="44" result="FI"/></play>
    <play type="K"><p_pr vh="H" uni="22" gain="15" result="F"/></play>
    <play type="K"><p_fg vh="H" uni="3" dist="51" result="B"/></play>
    <play type="K"><p_pat vh="H" uni="3" result="M"/></play>
    <play type="K"><p_kr vh="H" uni="22" gain="98" result="D"/></play>
    <play type="K"><p_pu vh="H" uni="3" gain="37" result="T"/></play>
    <play type="K"><p_pr vh="H" uni="22" gain="0" result="C"/></play>
  </qtr></plays>
</fbgame>
)";

} // namespace scorvane::testing
