 INSERT INTO BU67_BDGCASHFLOW 
     (   BU67_ID_BU65 
        ,BU67_FLGSCADMAN 
     )   
 VALUES  
     (   31
        ,0 
     )   