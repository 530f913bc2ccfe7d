-- The demo deductor loaded on first start. Idempotent: an edited demo row is left alone.

INSERT IGNORE INTO Main_Info (Code_No, Name, Tanno, panno, Branch, flat, building, street, area, city, State, PIN,
    Phone_Nos, Email, Email1, Mobile, Mobile1,
    Resp_Name, Resp_FName, Resp_Desig, Resp_Pan, Resp_Mobile, Resp_Email,
    Resp_Flat, Resp_Building, Resp_Street, Resp_Area, Resp_City, Resp_State, Resp_PIN,
    FormPlace, FormDate)
  VALUES ('DEMO01', 'DEMO TRADERS PRIVATE LIMITED', 'MUMD12345E', 'AABCD1234E', 'HEAD OFFICE',
    '401, 4TH FLOOR', 'SUNRISE CHAMBERS', '22, NARIMAN ROAD', 'NARIMAN POINT', 'MUMBAI', 'MAHARASHTRA', '400021',
    '022-22041234', 'accounts@demotraders.example', 'tds@demotraders.example', '9820012345', '9820054321',
    'RAJESH KUMAR SHARMA', 'MOHAN LAL SHARMA', 'DIRECTOR', 'ABCPS1234K', '9820098765', 'rajesh.sharma@demotraders.example',
    'FLAT 12, B WING', 'SEA VIEW APARTMENTS', 'MARINE DRIVE', 'CHURCHGATE', 'MUMBAI', 'MAHARASHTRA', '400020',
    'MUMBAI', '01/04/2025');

INSERT IGNORE INTO Main_Info_oth (code_no, Name, panno, status, dob, flat, building, street, area, city, State, PIN,
    Phone_Nos, Email, ward, asofficer, resident_status)
  VALUES ('DEMO01', 'DEMO TRADERS PRIVATE LIMITED', 'AABCD1234E', 'C', '15/06/2005',
    '401, 4TH FLOOR', 'SUNRISE CHAMBERS', '22, NARIMAN ROAD', 'NARIMAN POINT', 'MUMBAI', 'MAHARASHTRA', '400021',
    '022-22041234', 'accounts@demotraders.example', 'WARD 2(3)(1), MUMBAI', 'ITO (TDS) WARD 2(3)(1), MUMBAI', 'RESIDENT');
